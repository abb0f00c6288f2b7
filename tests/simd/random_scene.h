// SPDX-License-Identifier: MIT
// Random frames, points and polygons: ordinary ones, and extreme ones at the limits of every range.
#pragma once

#include "core/sanitized.h"
#include "main_68k/viewer_state.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// How many points a test of points compares; fewer where a sanitizer slows it down.
constexpr std::size_t points_wanted = is_sanitized ? 100'000 : 1'200'000;

/// A small generator of random numbers, the same on every system.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint32_t bits();

    /// 0 to `count` - 1.
    int below(int count) { return static_cast<int>(bits() % static_cast<std::uint32_t>(count)); }

    /// True once in `count` times on average.
    bool once_in(int count) { return below(count) == 0; }

    float between(float low, float high);

    /// Any float: NaN, infinite, huge, tiny, or a limit of the integers.
    float wild_number();

private:
    std::uint64_t state_;
};

/// A frame's size in pixels.
struct FrameSize {
    int width;
    int height;
};

/// Small frames, frames whose rows are not a multiple of a vector, frames with hardly any drawn rows, common
/// sizes, and rows longer than any buffer of a stage.
constexpr std::array<FrameSize, 13> frame_sizes{{{320, 256},
                                                 {100, 75},
                                                 {333, 217},
                                                 {640, 480},
                                                 {16, 14},
                                                 {17, 40},
                                                 {7, 33},
                                                 {1, 33},
                                                 {2, 33},
                                                 {3, 33},
                                                 {200, 11},
                                                 {1921, 60},
                                                 {5000, 20}}};

/// Opens frame buffers of exactly this size, and fills them, the texture and the dot sprite with noise.
void open_noisy_frame(FrameSize size, Random &random);

/// The bytes of both frame buffers, followed by the depths.
struct FrameContents {
    std::vector<std::uint8_t> pixels;
    std::vector<std::uint16_t> depths;
    bool operator==(const FrameContents &) const = default;
};
FrameContents frame_contents();
void restore_frame(const FrameContents &contents);

/// The kind of points that a random object has.
enum class Shapes { small, any, steep, grid, wild };
constexpr std::array<Shapes, 5> all_shapes{Shapes::small, Shapes::any, Shapes::steep, Shapes::grid,
                                           Shapes::wild};

/// Makes an object of random projected points, normals and colours, and about `polygons` polygons: runs of
/// triangles and of quads, and among them polygons with any number of points (even too few) and with invalid
/// indices. Returns the number of triangles that the polygons have.
int make_random_object(Shapes shapes, int polygons, Random &random);
