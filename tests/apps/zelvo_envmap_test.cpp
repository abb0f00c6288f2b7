// SPDX-License-Identifier: MIT
// The textures that zelvo-envmap makes, and how the viewer shows them.
#include "picture_reading.h"
#include "support/tool_run.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <numbers>
#include <png.h>
#include <random>

namespace {

using EnvmapWords = std::vector<std::string>;

constexpr int side = 256;
constexpr std::size_t texture_bytes = 65536;

/// The two functions of sRGB, for levels from 0 to 255.
double light_of_level(double level) {
    const double part = level / 255;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}
int level_of_light(double light) {
    const double part = light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
    return static_cast<int>(std::lround(std::clamp(part, 0.0, 1.0) * 255));
}

/// A grey picture whose pixels are given by column and row.
std::string pgm(int width, int height, const std::function<int(int, int)> &level) {
    std::string bytes = "P5\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n";
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            bytes += static_cast<char>(level(x, y));
        }
    }
    return bytes;
}

class Envmap : public testing::Test {
protected:
    ToolRun run(const EnvmapWords &arguments) const {
        return run_tool("zelvo-envmap", arguments, {files.folder(), files.folder(), {}});
    }

    /// The texture of a picture, turned so that the first byte is the upper left one that is seen.
    std::vector<int> texture_of(const std::string &picture, EnvmapWords options = {},
                                const std::string &name = "in.pnm") const {
        files.write(name, picture);
        options.insert(options.end(), {name, "out.chunky"});
        const ToolRun made = run(options);
        EXPECT_EQ(made.exit_code, 0);
        EXPECT_EQ(made.output + made.errors, "");
        const std::string bytes = files.read("out.chunky");
        EXPECT_EQ(bytes.size(), texture_bytes);
        std::vector<int> seen;
        std::transform(bytes.rbegin(), bytes.rend(), std::back_inserter(seen),
                       [](char byte) { return static_cast<unsigned char>(byte); });
        seen.resize(texture_bytes);
        return seen;
    }

    /// The level of all texels of a picture of one colour.
    int level_of(const std::string &picture, const EnvmapWords &options = {}) const {
        const std::vector<int> seen = texture_of(picture, options);
        EXPECT_EQ(std::ranges::count(seen, seen[0]), std::ssize(seen));
        return seen[0];
    }

    const TemporaryFiles files;
};

std::string random_bytes() {
    std::mt19937 random(1);
    std::string bytes(texture_bytes, '\0');
    std::ranges::generate(bytes, [&random] { return static_cast<char>(random()); });
    return bytes;
}

TEST_F(Envmap, IsThePictureUpsideDown) {
    const std::string pixels = random_bytes();
    const std::vector<int> seen = texture_of(pgm(side, side, [&](int x, int y) {
        return static_cast<unsigned char>(pixels[static_cast<std::size_t>(y * side + x)]);
    }));
    EXPECT_TRUE(
        std::ranges::equal(seen, pixels, {}, {}, [](char byte) { return static_cast<unsigned char>(byte); }));
}

TEST_F(Envmap, BecomesAPictureAndTheSameTextureAgain) {
    const std::string texture = random_bytes();
    files.write("a.chunky", texture);
    ASSERT_EQ(run({"--to-png", "a.chunky", "a.png"}).exit_code, 0);
    ASSERT_EQ(run({"a.png", "b.chunky"}).exit_code, 0);
    EXPECT_TRUE(files.read("b.chunky") == texture);
}

TEST_F(Envmap, HasTheLuminanceOfColours) {
    const std::string colours("\xFF\0\0\0\xFF\0\0\0\xFFppp", 12);
    std::string picture = "P6\n256 256\n255\n";
    for (int i = 0; i < side * side; ++i) {
        picture += colours.substr(static_cast<std::size_t>(i % side / 64 * 3), 3);
    }
    const std::vector<int> seen = texture_of(picture);
    EXPECT_EQ(seen[0], level_of_light(0.2126));
    EXPECT_EQ(seen[64], level_of_light(0.7152));
    EXPECT_EQ(seen[128], level_of_light(0.0722));
    EXPECT_EQ(seen[192], 'p');
}

TEST_F(Envmap, TakesFloatsAsLinearLight) {
    // 128 / 256 times 2 to the power of 130 - 128: the light is 2, more than that of white.
    const std::string pixel = "#?RADIANCE\nFORMAT=32-bit_rle_rgbe\n\n-Y 1 +X 1\n\x80\x80\x80\x82";
    EXPECT_EQ(texture_of(pixel, {}, "in.hdr")[0], 255);
    EXPECT_EQ(texture_of(pixel, {"--exposure", "-2"}, "in.hdr")[0], level_of_light(0.5));
}

TEST_F(Envmap, IsBlackWhereThePictureIsTransparent) {
    // Two pixels of brightness and opacity above each other.
    const std::array<std::uint8_t, 8> pixels{200, 255, 200, 255, 200, 0, 200, 0};
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = 2;
    image.height = 2;
    image.format = PNG_FORMAT_GA;
    ASSERT_NE(png_image_write_to_file(&image, files.path("a.png").c_str(), 0, pixels.data(), 0, nullptr), 0);
    const std::vector<int> seen = texture_of(files.read("a.png"), {}, "in.png");
    EXPECT_EQ(seen.front(), 200);
    EXPECT_EQ(seen.back(), 0);
}

/// A TIFF of two rows of two grey pixels: 10 20, 30 40.
std::string tiff(int orientation) {
    const auto little = [](int number, int bytes) {
        std::string text;
        for (int i = 0; i < bytes; ++i) {
            text += static_cast<char>(number >> 8 * i & 0xff);
        }
        return text;
    };
    // Width, height, bits, compression, black is 0, place of the pixels, orientation, samples, rows, bytes.
    const std::vector<std::pair<int, int>> tags{{256, 2},   {257, 2},           {258, 8}, {259, 1}, {262, 1},
                                                {273, 134}, {274, orientation}, {277, 1}, {278, 2}, {279, 4}};
    constexpr int kind_of_words = 3;
    std::string file = "II*" + std::string(1, '\0') + little(8, 4) + little(static_cast<int>(tags.size()), 2);
    for (const auto &[tag, value] : tags) {
        file += little(tag, 2) + little(kind_of_words, 2) + little(1, 4) + little(value, 4);
    }
    return file + little(0, 4) + "\x0A\x14\x1E\x28";
}

TEST_F(Envmap, TurnsAPhotographThatLiesOnItsSide) {
    constexpr std::size_t last = side - 1;
    const std::vector<int> upright = texture_of(tiff(1), {}, "in.tif");
    EXPECT_EQ(upright[0], 10);
    EXPECT_EQ(upright[last], 20);
    EXPECT_EQ(upright[last * side], 30);
    const std::vector<int> turned = texture_of(tiff(6), {}, "in.tif");
    EXPECT_EQ(turned[0], 30);
    EXPECT_EQ(turned[last], 10);
    EXPECT_EQ(turned[last * side], 40);
}

TEST_F(Envmap, ChangesLightAndContrast) {
    const std::string grey = pgm(1, 1, [](int, int) { return 64; });
    EXPECT_EQ(level_of(grey, {"--exposure", "1"}), level_of_light(2 * light_of_level(64)));
    EXPECT_EQ(level_of(grey, {"--exposure", "-1.5"}), level_of_light(std::exp2(-1.5) * light_of_level(64)));
    EXPECT_EQ(level_of(grey, {"--contrast", "1.5"}), std::lround((64.0 - 127.5) * 1.5 + 127.5));
    EXPECT_EQ(level_of(grey, {"--exposure", "20", "--contrast", "100"}), 255);
}

TEST_F(Envmap, TakesTheSquareInTheMiddle) {
    EXPECT_EQ(level_of(pgm(9, 3, [](int x, int) { return x < 3 || x > 5 ? 0 : 100; })), 100);
    EXPECT_EQ(level_of(pgm(2, 8, [](int, int y) { return y < 3 || y > 4 ? 0 : 100; })), 100);
}

TEST_F(Envmap, AveragesTheLightOfManyPixels) {
    const std::vector<int> seen = texture_of(pgm(2 * side, 2 * side, [](int x, int y) {
        return y < side ? ((x + y) % 2 == 0 ? 255 : 0) : ((x + y) % 2 == 0 ? 200 : 100);
    }));
    EXPECT_EQ(std::ranges::count(seen, level_of_light(0.5)), std::ssize(seen) / 2);
    EXPECT_EQ(seen.back(), level_of_light((light_of_level(200) + light_of_level(100)) / 2));
}

TEST_F(Envmap, IsSoftenedOnRequest) {
    const std::string dot = pgm(side, side, [](int x, int y) { return x == 100 && y == 50 ? 255 : 0; });
    const std::vector<int> seen = texture_of(dot, {"--blur", "2"});
    double light = 0;
    for (const int level : seen) {
        light += light_of_level(level);
    }
    EXPECT_NEAR(light, 1, 0.05);
    const auto at = [&](int x, int y) { return seen[static_cast<std::size_t>(y * side + x)]; };
    EXPECT_EQ(at(100, 50), level_of_light(1 / (2 * std::numbers::pi * 4)));
    EXPECT_GT(at(100, 50), at(102, 50));
    EXPECT_EQ(at(102, 50), at(100, 48));
    EXPECT_EQ(at(120, 50), 0);
}

/// A patch of light in a panorama, and where a sphere of chrome shows it: in units of its radius.
struct Patch {
    const char *where;
    double around;
    double up;
    double x;
    double y;
};
const double half = std::sqrt(0.5);
const std::vector<Patch> patches{
    {"left", -90, 0, -half, 0}, {"right", 90, 0, half, 0}, {"up", 0, 90, 0, half},
    {"down", 0, -90, 0, -half}, {"back", 180, 0, 0, 0},
};

/// A panorama that is black except for this patch.
std::string panorama(const Patch &patch, int width = 720) {
    return pgm(width, width / 2, [&](int x, int y) {
        const double around = ((x + 0.5) / width - 0.5) * 360 - patch.around;
        const double up = 90 - (y + 0.5) / width * 360 - patch.up;
        const double across = std::abs(std::remainder(around, 360.0));
        return std::abs(up) < 12 && (across < 12 || std::abs(patch.up) == 90) ? 255 : 0;
    });
}

/// The level at a place of the sphere that is seen.
int level_at(const std::vector<int> &seen, double x, double y) {
    const long column = std::lround(127.5 + x * 123);
    const long row = std::lround(127.5 - y * 123);
    return seen[static_cast<std::size_t>(row * side + column)];
}

/// Where the viewer shows a place of the sphere: pixels from the centre of a picture of 320 x 256. `place` is
/// x or y, and these are in units of the radius as seen from far away. The sphere's radius is 110 and its
/// distance 250.
double on_screen(double place, double x, double y) {
    const double nearness = 110 * std::sqrt(1 - x * x - y * y);
    return place * 110 * 250 / (250 - nearness);
}

TEST_F(Envmap, ReflectsAPanoramaTheRightWayAround) {
    for (const Patch &patch : patches) {
        const std::vector<int> seen = texture_of(panorama(patch), {"--panorama"});
        const ToolRun drawn =
            run_tool("zelvo-render",
                     {std::string(ZELVO_DATA_FOLDER) + "/sphere.lwo", "--envmap", "out.chunky", "--mode",
                      "envmap", "--size", "320x256", "--no-texts", "--chunky", "frames"},
                     {files.folder(), files.folder(), {}});
        ASSERT_EQ(drawn.exit_code, 0);
        const IndexedPicture frame = read_pgm(files.read("frames/00003.pgm"));
        for (const Patch &other : patches) {
            const int expected = &other == &patch ? 255 : 0;
            EXPECT_EQ(level_at(seen, other.x, other.y), expected) << patch.where << " " << other.where;
            const int x = static_cast<int>(160 + on_screen(other.x, other.x, other.y));
            const int y = static_cast<int>(128 - on_screen(other.y, other.x, other.y));
            EXPECT_EQ(frame.at(x, y), expected) << patch.where << " " << other.where << " in the viewer";
        }
    }
    // The middle is behind the sphere, and seen only at its rim.
    const std::vector<int> ahead = texture_of(panorama({"ahead", 0, 0, 0, 0}), {"--panorama"});
    EXPECT_EQ(level_at(ahead, 0, 0), 0);
    EXPECT_GT(level_at(ahead, 0.999, 0), 150);
    EXPECT_GT(level_at(ahead, 0, 0.999), 150);
}

TEST_F(Envmap, TurnsAPanoramaToTheRight) {
    const Patch ahead{"ahead", 0, 0, 0, 0};
    EXPECT_EQ(level_at(texture_of(panorama(ahead), {"--panorama", "--turn", "90"}), half, 0), 255);
    EXPECT_EQ(level_at(texture_of(panorama(ahead), {"--panorama", "--turn", "180"}), 0, 0), 255);
    EXPECT_EQ(level_at(texture_of(panorama(ahead), {"--panorama", "--turn", "-90"}), -half, 0), 255);
}

TEST_F(Envmap, IsTheSameFromAPanoramaOfAnySize) {
    const std::vector<int> small = texture_of(panorama(patches[0], 720), {"--panorama"});
    const std::vector<int> large = texture_of(panorama(patches[0], 4320), {"--panorama"});
    int different = 0;
    for (std::size_t i = 0; i < small.size(); ++i) {
        different += std::abs(small[i] - large[i]) > 40 ? 1 : 0;
    }
    EXPECT_LT(different, 100);
}

TEST_F(Envmap, ShowsTheBallOfAPhotograph) {
    // A dark ball that fills the height, with a bright upper left quarter, in front of a grey wall.
    const std::vector<int> seen = texture_of(pgm(800, 600,
                                                 [](int x, int y) {
                                                     const double across = (x + 0.5 - 400) / 300;
                                                     const double down = (y + 0.5 - 300) / 300;
                                                     const bool is_ball = std::hypot(across, down) < 1;
                                                     return !is_ball ? 90 : across < 0 && down < 0 ? 220 : 20;
                                                 }),
                                             {"--ball"});
    EXPECT_EQ(level_at(seen, -0.5, 0.5), 220);
    EXPECT_EQ(level_at(seen, 0.5, 0.5), 20);
    EXPECT_EQ(level_at(seen, -0.5, -0.5), 20);
    EXPECT_EQ(level_at(seen, 0.6, -0.6), 20);
    EXPECT_EQ(level_at(seen, -0.95, 0.1), 220);
}

TEST_F(Envmap, HasAPreview) {
    texture_of(panorama(patches[0]), {"--panorama", "--preview", "ball.png"});
    const IndexedPicture picture = read_png(files.path("ball.png"));
    ASSERT_EQ(picture.width, 640);
    ASSERT_EQ(picture.height, 512);
    const int away = static_cast<int>(2 * on_screen(half, half, 0));
    EXPECT_EQ(picture.at(320 - away, 256), 255);
    EXPECT_EQ(picture.at(320 + away, 256), 0);
    const ToolRun refused = run({"in.pnm", "out.chunky", "--preview", "none/ball.png"});
    EXPECT_EQ(refused.exit_code, 1);
    EXPECT_NE(refused.errors.find("none/ball.png"), std::string::npos) << refused.errors;
    EXPECT_EQ(std::ranges::count(refused.errors, '\n'), 1) << refused.errors;
}

TEST_F(Envmap, IsRefusedInOneLine) {
    files.write("in.pgm", pgm(2, 2, [](int, int) { return 9; }));
    files.write("empty.png", "");
    files.write("garbage.png", "something else");
    files.write("cut.pgm", "P5\n1000 1000\n255\nabc");
    files.write("short.chunky", std::string(texture_bytes - 1, 'x'));
    files.write("long.chunky", std::string(texture_bytes + 1, 'x'));
    const std::vector<std::pair<EnvmapWords, std::string>> refusals{
        {{"none.png", "out.chunky"}, "none.png: No such file or directory\n"},
        {{".", "out.chunky"}, ".: Is a directory\n"},
        {{"empty.png", "out.chunky"}, "empty.png: it is empty\n"},
        {{"garbage.png", "out.chunky"}, "garbage.png: cannot be read: "},
        {{"cut.pgm", "out.chunky"}, "cut.pgm: cannot be read: "},
        {{"in.pgm", "in.pgm/out.chunky"}, "in.pgm: cannot write in.pgm/out.chunky: Not a directory\n"},
        {{"--to-png", "short.chunky", "out.png"}, "short.chunky: not a texture, which has 65536 bytes\n"},
        {{"--to-png", "long.chunky", "out.png"}, "long.chunky: not a texture, which has 65536 bytes\n"},
    };
    for (const auto &[arguments, reason] : refusals) {
        const ToolRun refused = run(arguments);
        EXPECT_EQ(refused.exit_code, 1) << reason;
        EXPECT_TRUE(refused.errors.starts_with("zelvo-envmap: " + reason)) << refused.errors << reason;
        EXPECT_EQ(std::ranges::count(refused.errors, '\n'), 1) << refused.errors;
    }
    for (const EnvmapWords &arguments :
         {EnvmapWords{}, EnvmapWords{"in.pgm"}, EnvmapWords{"--ball", "--panorama", "in.pgm", "out.chunky"},
          EnvmapWords{"--turn", "9", "in.pgm", "out.chunky"},
          EnvmapWords{"--to-png", "--ball", "in.pgm", "out.png"},
          EnvmapWords{"--blur", "-1", "in.pgm", "out.chunky"},
          EnvmapWords{"--contrast", "nan", "in.pgm", "out.chunky"},
          EnvmapWords{"--panorama", "--turn", "inf", "in.pgm", "out.chunky"}}) {
        EXPECT_EQ(run(arguments).exit_code, 2) << testing::PrintToString(arguments);
    }
    EXPECT_FALSE(std::filesystem::exists(files.path("out.chunky")));
    EXPECT_FALSE(std::filesystem::exists(files.path("out.png")));
}

} // namespace
