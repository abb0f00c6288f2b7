// SPDX-License-Identifier: MIT
// Writes the seeds of the three fuzz targets, one file for each way in which an input can be hostile.
#include "program_input.h"

#include "support/model_builder.h"
#include "support/settings_text.h"

#include <array>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

using Words = std::vector<std::uint16_t>;
using Points = std::vector<Vec3>;

std::filesystem::path seed_folder;

void write_seed(const std::string &target, const std::string &name, const std::string &bytes) {
    std::filesystem::create_directories(seed_folder / target);
    std::ofstream file(seed_folder / target / name, std::ios::binary);
    file << bytes;
    if (!file.flush()) {
        std::fprintf(stderr, "cannot write %s\n", name.c_str());
        std::exit(EXIT_FAILURE);
    }
}

const Points &square() {
    static const Points points{
        {-1.0F, -1.0F, 0.0F}, {1.0F, -1.0F, 0.5F}, {1.0F, 1.0F, 0.0F}, {-1.0F, 1.0F, -0.5F}};
    return points;
}

const Words &two_triangles() {
    static const Words words{3, 0, 1, 2, 1, 3, 0, 2, 3, 1};
    return words;
}

void object_seed(const std::string &name, const std::string &chunks) {
    write_seed("object", name, form("LWOB", chunks));
}

void write_polygon_seeds() {
    const std::string points = chunk("PNTS", point_data(square()));
    const auto with_words = [&points](const std::string &name, const Words &words) {
        object_seed(name, points + chunk("POLS", word_data(words)));
    };
    with_words("plain", two_triangles());
    with_words("quad-and-pentagon", {4, 0, 1, 2, 3, 1, 5, 0, 1, 2, 3, 0, 2});
    with_words("index-at-count", {3, 0, 1, 4, 1, 3, 0, 2, 3, 1});
    with_words("index-beyond-count", {3, 0, 65535, 2, 1, 3, 0, 2, 3, 1});
    with_words("vertices-0", {0, 1, 3, 0, 1, 2, 1, 0, 1, 2, 3, 1});
    with_words("vertices-1", {1, 0, 1, 3, 0, 1, 2, 1, 1, 0, 1, 2});
    with_words("vertices-2", {2, 0, 1, 2, 3, 0, 1, 2, 1, 2, 0, 1, 2});
    with_words("vertices-65535", {65535, 0, 1, 2, 1, 3, 0, 2, 3, 1});
    // All triangles except the last few have no area, so that the fan is long but quickly filled.
    Words fan(65537, 0);
    fan.front() = 65535;
    for (std::size_t i = fan.size() - 5; i < fan.size(); ++i) {
        fan[i] = static_cast<std::uint16_t>(i % 4);
    }
    with_words("vertices-65535-all-there", fan);
    with_words("count-beyond-chunk", {3, 0, 1, 2, 1, 7, 0, 2, 3, 1});
    with_words("no-room-for-third-point", {3, 0, 1, 2, 1, 0, 0, 2});
    with_words("detail-polygons",
               {3, 0, 1, 2, 0xFFFE, 1, 3, 0, 2, 3, 1, 3, 0, 1, 3, 0xFFFF, 2, 3, 0, 1, 2, 1, 3, 1, 2, 3, 1});
    with_words("same-point-thrice", {3, 0, 0, 0, 1, 3, 1, 1, 2, 1});
}

void write_point_seeds() {
    const std::string words = chunk("POLS", word_data(two_triangles()));
    const auto with_points = [&words](const std::string &name, const Points &points) {
        object_seed(name, chunk("PNTS", point_data(points)) + words);
    };
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    with_points("points-infinite", {{infinity, 0, 0}, {1, -infinity, 0}, {1, 1, 0}, {0, 1, infinity}});
    with_points("point-infinite", {{-1, -1, 0}, {1, -1, 0}, {1, 1, infinity}, {-1, 1, 0}});
    with_points("points-not-a-number", {{nan, nan, nan}, {nan, 0, 0}, {0, nan, 0}, {0, 0, nan}});
    with_points("last-point-not-a-number", {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {nan, 1, 0}});
    with_points("points-huge", {{-1e38F, -1e38F, 0}, {1e38F, -1e38F, 0}, {1e38F, 1e38F, 0}, {0, 0, 3e38F}});
    with_points("points-overflowing", {{-1e19F, 0, 0}, {1e19F, 0, 0}, {0, 2e19F, 0}, {0, 0, 1e19F}});
    with_points("points-tiny", {{-1e-20F, 0, 0}, {1e-20F, 0, 0}, {0, 1e-20F, 0}, {0, 0, 2e-20F}});
    with_points("points-underflowing", {{-1e-45F, 0, 0}, {1e-38F, 0, 0}, {0, 1e-30F, 0}, {0, 0, 2e-38F}});
    with_points("points-all-the-same", {{2, 3, 4}, {2, 3, 4}, {2, 3, 4}, {2, 3, 4}});
    with_points("points-all-zero", {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}});
    with_points("points-on-a-line", {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {3, 3, 3}});
    with_points("one-point", {{1, 2, 3}});
    with_points("far-and-near", {{0, 0, 1e6F}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}});
}

void write_chunk_seeds() {
    const std::string points = point_data(square());
    const std::string words = word_data(two_triangles());
    const std::string points_chunk = chunk("PNTS", points);
    const std::string words_chunk = chunk("POLS", words);
    write_seed("object", "empty-file", "");
    write_seed("object", "later-form", form("LWO2", points_chunk + words_chunk));
    write_seed("object", "no-form", "RIFF" + form("LWOB", points_chunk + words_chunk).substr(4));
    object_seed("no-chunks", "");
    object_seed("no-points", words_chunk);
    object_seed("no-polygons", points_chunk);
    object_seed("empty-points", chunk("PNTS", "") + words_chunk);
    object_seed("empty-polygons", points_chunk + chunk("POLS", ""));
    object_seed("polygons-first", words_chunk + points_chunk);
    object_seed("other-chunks", chunk("SRFS", std::string("plain\0", 6)) + points_chunk + chunk("CRVS", "") +
                                    words_chunk + chunk("SURF", std::string(33, '\1')));
    object_seed("points-repeated", chunk("PNTS", point_data({{9, 9, 9}})) + words_chunk + points_chunk);
    object_seed("points-repeated-fewer", points_chunk + words_chunk + chunk("PNTS", point_data({{9, 9, 9}})));
    object_seed("polygons-repeated", points_chunk + chunk("POLS", word_data({3, 2, 1, 0, 1})) + words_chunk);
    object_seed("points-emptied", points_chunk + words_chunk + chunk("PNTS", ""));

    object_seed("points-odd-size", chunk("PNTS", points + "\x3F\x80") + words_chunk);
    object_seed("points-one-byte", chunk("PNTS", "\x3F") + words_chunk);
    object_seed("points-eleven-bytes", chunk("PNTS", points.substr(0, 11)) + words_chunk);
    object_seed("polygons-odd-size", points_chunk + chunk("POLS", words + "\x03"));
    object_seed("polygons-one-byte", points_chunk + chunk("POLS", "\x03"));
    object_seed("other-odd-size", chunk("SRFS", "abc") + points_chunk + words_chunk);

    object_seed("points-top-bit", claiming("PNTS", 0x80000000, points) + words_chunk);
    object_seed("points-largest", words_chunk + claiming("PNTS", 0x7FFFFFFF, points));
    object_seed("points-all-bits", claiming("PNTS", 0xFFFFFFFF, points) + words_chunk);
    object_seed("polygons-top-bit", points_chunk + claiming("POLS", 0x80000000, words));
    object_seed("polygons-largest", points_chunk + claiming("POLS", 0x7FFFFFFF, words));
    object_seed("other-top-bit", points_chunk + words_chunk + claiming("SURF", 0x80000000, "abc"));
    object_seed("other-largest", points_chunk + words_chunk + claiming("SURF", 0x7FFFFFFF, "abc"));

    // More bytes than the file has, but no more than the harness allows.
    object_seed("points-beyond-file", words_chunk + claiming("PNTS", 1200, points));
    object_seed("points-far-beyond-file", words_chunk + claiming("PNTS", 12 * 80000, points));
    object_seed("points-cut-in-a-number", words_chunk + claiming("PNTS", 240, points.substr(0, 41)));
    object_seed("points-none-there", words_chunk + claiming("PNTS", 240, ""));
    object_seed("polygons-beyond-file", points_chunk + claiming("POLS", 200, words));
    object_seed("polygons-far-beyond-file", points_chunk + claiming("POLS", 1000000, words));
    object_seed("polygons-none-there", points_chunk + claiming("POLS", 200, ""));
    object_seed("polygons-cut-in-a-word", points_chunk + claiming("POLS", 200, words.substr(0, 15)));
    object_seed("fan-beyond-file", points_chunk + claiming("POLS", 200000, word_data({65535, 0, 1, 2})));

    std::string others;
    for (int i = 0; i < 99; ++i) {
        others += chunk("NAME", "");
    }
    object_seed("chunk-101-counts", others + points_chunk + words_chunk);
    object_seed("chunk-102-does-not", others + chunk("NAME", "") + points_chunk + words_chunk);
}

/// A small file cut after each of its bytes.
void write_truncations() {
    const std::string whole =
        form("LWOB", chunk("SRFS", "abc") + chunk("PNTS", point_data({{0, 0, 0}, {1, 0, 0}, {0, 1, 1}})) +
                         chunk("POLS", word_data({3, 0, 1, 2, 1})));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        std::array<char, 32> name{};
        std::snprintf(name.data(), name.size(), "truncated-%03zu", length);
        write_seed("object", name.data(), whole.substr(0, length));
    }
}

const std::string plain_settings = settings_text({{"gammas", "1.000000 1.200000 0.800000"},
                                                  {"rotate", "1.500000"},
                                                  {"obj style", "4"},
                                                  {"clear style", "2"},
                                                  {"dots", "1"},
                                                  {"width", "53"},
                                                  {"height", "41"}});

std::string replaced(const std::string &from, const std::string &to) {
    std::string settings = plain_settings;
    const std::size_t at = settings.find(from);
    if (at == std::string::npos) {
        std::abort();
    }
    return settings.replace(at, from.size(), to);
}

std::vector<std::pair<std::string, std::string>> settings_seeds() {
    return {
        {"plain", plain_settings},
        {"empty", ""},
        {"misspelt-label", replaced("obj style", "objstyle")},
        {"no-blank-after-label", replaced("fps: 1", "fps:1")},
        {"later-label-matches-again", replaced("fps: 1\ndots: 1\n", "dots: 1\n")},
        {"gammas-0", replaced("1.000000 1.200000 0.800000", "0 0 0")},
        {"gammas-negative", replaced("1.000000 1.200000 0.800000", "-1 -1e-300 -1e300")},
        {"gammas-infinite", replaced("1.000000 1.200000 0.800000", "inf -inf nan")},
        {"gammas-cut", replaced("1.000000 1.200000 0.800000", "1.5")},
        {"rotate-infinite", replaced("rotate: 1.500000", "rotate: inf")},
        {"rotate-not-a-number", replaced("rotate: 1.500000", "rotate: nan")},
        {"rotate-huge", replaced("rotate: 1.500000", "rotate: 1e308")},
        {"rotate-hexadecimal", replaced("rotate: 1.500000", "rotate: 0x1.8p1")},
        {"mode-7", replaced("obj style: 4", "obj style: 7")},
        {"mode-negative", replaced("obj style: 4", "obj style: -1")},
        {"mode-0", replaced("obj style: 4", "obj style: 0")},
        {"mode-dots", replaced("obj style: 4", "obj style: 6")},
        {"clear-style-4", replaced("clear style: 2", "clear style: 4")},
        {"clear-style-negative", replaced("clear style: 2", "clear style: -2147483648")},
        {"number-too-large", replaced("dot lum: 25600", "dot lum: 99999999999999999999")},
        {"dot-lum-largest", replaced("dot lum: 25600", "dot lum: 2147483647")},
        {"dot-lum-negative", replaced("2560\ninternal", "-2147483648\ninternal")},
        {"dot-lum-turns-dark", replaced("2560\ninternal", "-70000\ninternal")},
        {"name-missing", replaced("Zelvo_envmap.chunky", "")},
        {"name-with-blank", replaced("Zelvo_envmap.chunky", "my texture")},
        {"name-too-long", replaced("Zelvo_envmap.chunky", std::string(3000, 'n'))},
        {"name-longest", replaced("Zelvo_envmap.chunky", std::string(1023, 'n'))},
        {"name-with-percent", replaced("Zelvo_envmap.chunky", "%s%n%1000d")},
        {"display-0", replaced("width: 53", "width: 0")},
        {"display-negative", replaced("width: 53", "width: -1")},
        {"display-negative-both", replaced("width: 53\nheight: 41", "width: -53\nheight: -41")},
        {"display-1x1", replaced("width: 53\nheight: 41", "width: 1\nheight: 1")},
        {"display-flat", replaced("width: 53\nheight: 41", "width: 1000\nheight: 3")},
        {"display-narrow", replaced("width: 53\nheight: 41", "width: 1\nheight: 500")},
        {"display-largest", replaced("width: 53\nheight: 41", "width: 16384\nheight: 16384")},
        {"display-overflowing", replaced("width: 53\nheight: 41", "width: 65536\nheight: 65537")},
        {"mode-id-top-bit", replaced("ModeID: 0", "ModeID: -2147483648")},
        {"zero-bytes", std::string(100, '\0')},
        {"only-blanks", std::string(100, ' ')},
        {"carriage-returns", replaced("rotate: 1.500000\n", "rotate: 1.500000\r\n")},
    };
}

void write_settings_seeds() {
    for (const auto &[name, settings] : settings_seeds()) {
        write_seed("settings", name, settings);
    }
    const std::string &whole = plain_settings;
    for (std::size_t length = 0; length < whole.size(); length += 7) {
        std::array<char, 32> name{};
        std::snprintf(name.data(), name.size(), "truncated-%03zu", length);
        write_seed("settings", name.data(), whole.substr(0, length));
    }
}

/// One step per character of a text, one pass apart.
std::string keys(const std::string &characters) {
    std::string steps;
    for (const char character : characters) {
        steps += fuzz::step(fuzz::Step::key, 1, static_cast<unsigned char>(character), 0);
    }
    return steps;
}

void write_program_seeds() {
    using fuzz::Step;
    const std::string object = object_file(square(), two_triangles());
    const auto seed = [&object](const std::string &name, const std::string &settings,
                                const std::string &steps) {
        write_seed("program", name, fuzz::pack({object, settings, steps}));
    };
    seed("plain", "", "");
    seed("with-settings", plain_settings, "");
    seed("toggles", "", keys("bbbbcdefilpr"));
    seed("gammas", "", keys("0123456") + keys("R"));
    seed("saves-and-loads", plain_settings, keys("sSwW") + keys("sw"));
    seed("mode-change", "",
         fuzz::step(Step::answer_mode, 0, 53, 41) + fuzz::step(Step::answer_mode, 0, 99, 17) + keys("mm") +
             keys("m"));
    seed("mode-change-impossible", "",
         fuzz::step(Step::answer_mode, 0, 53, 41) + fuzz::step(Step::answer_mode, 0, 255, 0) + keys("m"));
    seed("mode-change-too-large", "",
         fuzz::step(Step::answer_mode, 0, 53, 41) + fuzz::step(Step::answer_mode, 0, 255, 15) + keys("m"));
    seed("mode-cancelled", "",
         fuzz::step(Step::cancel, 0, 0, 0) + fuzz::step(Step::cancel, 0, 0, 0) + keys("m"));
    seed("texture-change", plain_settings, fuzz::step(Step::answer_file, 0, 1, 0) + keys("t"));
    seed("texture-missing", plain_settings, fuzz::step(Step::answer_file, 0, 2, 0) + keys("t"));
    seed("texture-in-drawer", plain_settings, fuzz::step(Step::answer_file, 0, 12, 0) + keys("t"));
    seed("texture-cancelled", plain_settings, fuzz::step(Step::cancel, 0, 0, 0) + keys("t"));
    seed("texture-missing-at-start", replaced("Zelvo_envmap.chunky", "elsewhere"),
         fuzz::step(Step::answer_file, 0, 0, 0));
    std::string tour;
    for (int mode = 0; mode < 8; ++mode) {
        tour += fuzz::step(Step::right_button, 1, 0, 0) + fuzz::step(Step::cursor_key, 0, mode, 0) +
                fuzz::step(Step::move, 0, mode, mode * 29);
    }
    seed("tour", "", tour);
    seed("light-and-flip", "",
         keys("lidid") + fuzz::step(Step::move, 0, 1, 1) + fuzz::step(Step::move, 1, 255, 0));
    seed("mouse-far", plain_settings,
         fuzz::step(Step::move, 0, 127, 254) + fuzz::step(Step::move, 0, 127, 255));
    seed("left-button", "", fuzz::step(Step::left_button, 2, 0, 0));
    seed("loaded-size-differs", plain_settings + std::string("\n"),
         keys("s") + fuzz::step(Step::answer_mode, 0, 120, 90) + keys("mwm"));
    for (int point = 1; point <= 24; ++point) {
        seed("refused-" + std::to_string(point), point % 2 == 0 ? plain_settings : "",
             fuzz::step(Step::refuse, 0, 0, point) + keys("mt"));
    }
    write_seed("program", "no-object", fuzz::pack({"", plain_settings, keys("b")}));
    write_seed("program", "one-byte", "\1");
    write_seed("program", "empty", "");
    write_seed("program", "no-polygons",
               fuzz::pack({form("LWOB", chunk("PNTS", point_data(square()))), plain_settings, ""}));
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    seed_folder = argv[1];
    write_polygon_seeds();
    write_point_seeds();
    write_chunk_seeds();
    write_truncations();
    write_settings_seeds();
    write_program_seeds();
    return EXIT_SUCCESS;
}
