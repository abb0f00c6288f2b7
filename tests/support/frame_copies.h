// SPDX-License-Identifier: MIT
// Reads the frame that is being drawn, pixel by pixel or as a whole.
#pragma once

#include "display/frame_buffers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

inline std::size_t pixel_index(int x, int y) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(frame_width) + static_cast<std::size_t>(x);
}

/// Brightness and depth of one pixel.
inline std::uint8_t pixel(int x, int y) {
    return chunkybuf1[pixel_index(x, y)];
}
inline std::uint16_t depth(int x, int y) {
    return zbuf[pixel_index(x, y)];
}

/// The whole frame and its depths.
inline std::vector<std::uint8_t> frame_bytes() {
    return {chunkybuf1.get(), chunkybuf1.get() + frame_pixels()};
}
inline std::vector<std::uint16_t> frame_depths() {
    return {zbuf.get(), zbuf.get() + frame_pixels()};
}

/// Makes the frame and its depths black and far.
inline void blank_frame() {
    std::fill_n(chunkybuf1.get(), frame_pixels(), std::uint8_t{0});
    std::fill_n(zbuf.get(), frame_pixels(), std::uint16_t{0});
}

/// The columns of a row that are not black.
inline std::vector<int> lit_columns(int row) {
    std::vector<int> columns;
    for (int x = 0; x < frame_width; ++x) {
        if (pixel(x, row) != 0) {
            columns.push_back(x);
        }
    }
    return columns;
}

/// The columns from `first` to `last`.
inline std::vector<int> columns(int first, int last) {
    std::vector<int> list;
    for (int x = first; x <= last; ++x) {
        list.push_back(x);
    }
    return list;
}

/// The rows that have a pixel that is not black.
inline std::vector<int> lit_rows() {
    std::vector<int> rows;
    for (int y = 0; y < frame_height; ++y) {
        if (!lit_columns(y).empty()) {
            rows.push_back(y);
        }
    }
    return rows;
}
