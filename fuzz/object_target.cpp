// SPDX-License-Identifier: MIT
// Any bytes as an object: read, prepared, and drawn.
#include "harness.h"

#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "object/lwo_reader.h"
#include "pipeline/preparation.h"
#include "platform/dos.h"
#include "raster/dots.h"
#include "raster/texture_map.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <string>
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

/// Chooses among inputs without an order that a mutation could follow.
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

/// What start-up does between the file and the display.
void load_object() {
    static const std::vector<std::uint8_t> texture = uneven_texture();
    read_object(open_file(object_name, "rb"));
    envmap = allocate_array<std::uint8_t>(envmap_bytes);
    std::copy(texture.begin(), texture.end(), envmap.get());
    dot_image = allocate_array<std::uint8_t>(static_cast<std::size_t>(dot_image_size) * dot_image_size);
    prepare_object();
}

/// Every mode in every clear style. All polygons are drawn in every other style, so that culling hides none.
void draw_all(FrameSize size) {
    fuzz::open_frame(size.width, size.height);
    for (int style = 0; style < clear_styles; ++style) {
        viewer.doubleside = style % 2;
        for (int mode = 0; mode < modes; ++mode) {
            fuzz::draw(mode, style);
        }
    }
}

/// One of the modes that draw the object, in a style, both as the input chooses.
void draw_some(std::uint32_t choice) {
    fuzz::open_frame(small_size.width, small_size.height);
    viewer.doubleside = 1;
    const auto choose = [&choice](std::uint32_t bound) {
        const std::uint32_t chosen = choice % bound;
        choice /= bound;
        return static_cast<int>(chosen);
    };
    const int mode = 1 + choose(modes - 1);
    fuzz::draw(mode, choose(clear_styles));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::silence_output();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    constexpr std::uint32_t one_in = 512;
    const std::uint32_t choice = hash(data, size);
    fuzz::files = {{object_name, std::string(data, data + size)}};
    const fuzz::Ending ending = fuzz::run([choice] {
        load_object();
        viewer.rotate = 2.5;
        viewer.tilt_x = 30;
        if (is_thorough || choice % one_in == 0) {
            draw_all(small_size);
            draw_all(default_size);
        } else {
            draw_some(choice);
        }
    });
    fuzz::require(ending.exit_code == 0 || ending.exit_code == 20, "the object is drawn or refused");
    return 0;
}
