// SPDX-License-Identifier: MIT
// A slow dot plotter that visits every pixel. The program's plotter is compared with it.
#pragma once

#include <cstdint>
#include <vector>

/// Where and how a dot is plotted.
struct ReferenceDots {
    int width;
    int height;
    std::vector<std::uint8_t> &pixels;
    /// 64 x 64 texels.
    const std::vector<std::uint8_t> &sprite;
    std::int32_t luminance;
};

/// The sprite by its definition: a cone around (31, 31) that reaches 0 at a distance of 31.
std::vector<std::uint8_t> reference_sprite();

/// Plots one dot; x - s and y - s must lie within the range of 32-bit integers.
void walk_dot(const ReferenceDots &dots, float x, float y, float s);
