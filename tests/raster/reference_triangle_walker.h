// SPDX-License-Identifier: MIT
// A slow triangle filler that visits every pixel. The program's fillers are compared with it.
#pragma once

#include "raster/triangle_fillers.h"

#include <cstddef>
#include <cstdint>
#include <vector>

enum class Filler { zcolour, flat, gouraud, mapped };

/// The frame that the reference draws into.
struct ReferenceFrame {
    ReferenceFrame(int frame_columns, int frame_rows);

    int width;
    int height;
    std::vector<std::uint8_t> pixels;
    std::vector<std::uint16_t> depths;
};

/// Draws a triangle with finite y and sorts the block. `map` has 65536 texels.
void walk_triangle(ReferenceFrame &frame, TriangleParams &block, Filler filler, const std::uint8_t *map);
