// SPDX-License-Identifier: MIT
// Fuzz target: reads, prepares and draws any bytes as an object.
#include "harness.h"

#include "core/forms.h"
#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "object/lwo_reader.h"
#include "pipeline/preparation.h"
#include "platform/dos.h"
#include "raster/dots.h"
#include "raster/face_loops.h"
#include "raster/texture_map.h"
#if ZELVO_SIMD
#include "raster/simd/bands.h"
#endif

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr char object_name[] = "object.lwo";
constexpr int modes = 7;
constexpr int clear_styles = 4;

struct FrameSize {
    int width;
    int height;
};
constexpr FrameSize small_size{53, 41};
constexpr FrameSize default_size{320, 256};

/// A hash of the input, which makes choices that mutations cannot steer.
std::uint32_t hash(const std::uint8_t *data, std::size_t size) {
    return std::accumulate(data, data + size, 2166136261U,
                           [](std::uint32_t sum, std::uint8_t byte) { return (sum ^ byte) * 16777619U; });
}

/// A texture in which every texel differs from its neighbours.
std::vector<std::uint8_t> uneven_texture() {
    std::vector<std::uint8_t> texels(envmap_bytes);
    for (std::size_t i = 0; i < texels.size(); ++i) {
        texels[i] = static_cast<std::uint8_t>(i + i / 256 * 31);
    }
    return texels;
}

/// The part of start-up from the file to the display.
void load_object() {
    static const std::vector<std::uint8_t> texture = uneven_texture();
    read_object(open_file(object_name, "rb"));
    allocate_envmap();
    std::copy(texture.begin(), texture.end(), envmap.get());
    allocate_dot_image();
    prepare_object();
}

/// The results of a frame: hashes of its pixels and depths, and both counters.
struct FrameTrace {
    std::size_t pixels;
    std::size_t depths;
    std::int32_t faces;
    std::int32_t triangles;

    bool operator==(const FrameTrace &) const = default;
};

std::vector<FrameTrace> frames_drawn;

void draw_frame(int mode, int style) {
    fuzz::draw(mode, style);
    const auto hash_of = [](const auto &array) {
        return std::hash<std::string_view>{}(
            {reinterpret_cast<const char *>(array.get()), frame_pixels() * sizeof array[0]});
    };
    // The buffers have been exchanged, so this is the drawn one.
    frames_drawn.push_back({hash_of(chunkybuf2), hash_of(zbuf), faces_seen, triangles_drawn});
}

/// Draws every mode in every clear style. In every other style both sides of polygons are drawn, so that none
/// is culled.
void draw_all(FrameSize size) {
    fuzz::open_frame(size.width, size.height);
    for (int style = 0; style < clear_styles; ++style) {
        viewer.doubleside = style % 2;
        for (int mode = 0; mode < modes; ++mode) {
            draw_frame(mode, style);
        }
    }
}

/// Draws one mode in one clear style, both chosen by the input.
void draw_some(std::uint32_t choice) {
    fuzz::open_frame(small_size.width, small_size.height);
    viewer.doubleside = 1;
    const auto choose = [&choice](std::uint32_t bound) {
        const std::uint32_t chosen = choice % bound;
        choice /= bound;
        return static_cast<int>(chosen);
    };
    const int mode = 1 + choose(modes - 1);
    draw_frame(mode, choose(clear_styles));
}

/// Has the fast forms draw half of the objects in bands of a few rows, as they draw large frames.
void choose_bands(std::uint32_t choice) {
    keeps_depths = true;
#if ZELVO_SIMD
    static const fast::BandSizes usual = fast::band_sizes;
    constexpr fast::BandSizes few_rows{0, 5 * default_size.width};
    // Uses other bits of the choice than those that choose the mode and the style.
    fast::band_sizes = (choice >> 20) % 2 == 0 ? few_rows : usual;
#else
    static_cast<void>(choice);
#endif
}

/// Processes an object from its file to its frames, which are stored in `frames_drawn`.
int draw_object(std::uint32_t choice, bool draws_all, bool is_fast) {
    draws_fast = is_fast;
    choose_bands(choice);
    frames_drawn.clear();
    const fuzz::Ending ending = fuzz::run({}, [choice, draws_all] {
        load_object();
        viewer.rotate = 2.5;
        viewer.tilt_x = 30;
        if (draws_all) {
            draw_all(small_size);
            draw_all(default_size);
        } else {
            draw_some(choice);
        }
    });
    return ending.exit_code;
}

/// How many polygons the plain form of a frame processes. It lights each of them once, even if the polygon's
/// points are only claimed. Polygons past the end of the file are identical, and only the first is drawn.
int polygons_taken() {
    static int lit;
    lit = 0;
    const auto count_lights = [](const FaceCorners &, std::size_t count, float *colours) {
        lit += static_cast<int>(count);
        std::fill_n(colours, count, 0.0F);
    };
    fuzz::run({}, [count_lights] {
        load_object();
        viewer.doubleside = 1;
        fuzz::open_frame(small_size.width, small_size.height);
        plain::face_loop_lightsourced(count_lights);
    });
    return lit;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::silence_output();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    constexpr std::uint32_t all_frames_one_in = 512;
    constexpr std::uint32_t plain_one_in = 4;
    const std::uint32_t choice = hash(data, size);
    fuzz::files = {{object_name, std::string(data, data + size)}};
    const bool draws_all = is_thorough || choice % all_frames_one_in == 0;
    const int exit_code = draw_object(choice, draws_all, true);
    fuzz::require(exit_code == 0 || exit_code == 20, "the object is drawn or refused");
    // Uses other bits of the choice than those that choose the mode and the style.
    if (is_thorough || (choice >> 24) % plain_one_in == 0) {
        const std::vector<FrameTrace> fast_frames = frames_drawn;
        const int plain_exit_code = draw_object(choice, draws_all, false);
        fuzz::require(plain_exit_code == exit_code, "both forms of the stages draw or refuse the object");
        fuzz::require(frames_drawn == fast_frames, "both forms of the stages draw the same frames");
    }
    if (draws_all) {
        // Each polygon has at least two words in the list, except one past the end.
        fuzz::require(polygons_taken() <= static_cast<int>(size / 4) + 2,
                      "a polygon list costs no more than the file holds of it, whatever it claims");
    }
    return 0;
}
