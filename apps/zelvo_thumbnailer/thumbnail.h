// SPDX-License-Identifier: MIT
// The small picture: the large one reduced, with the background transparent.
#pragma once

#include <cstdint>
#include <vector>

/// Rows of pixels, top row first; two bytes per pixel, brightness (0 to 255, as in sRGB) and opacity.
struct Thumbnail {
    int side;
    std::vector<std::uint8_t> bytes;
};

/// Reduces the frame in `chunkybuf1`, whose background is 0 and whose sides are `factor` times those of the
/// thumbnail. Each pixel is a square of `factor` x `factor`: its opacity is the part that the object covers,
/// its brightness that of the covered part's mean light, so that no background gets into an edge.
Thumbnail reduce_frame(int factor);

/// Whether the background is all that there is.
bool is_empty(const Thumbnail &thumbnail);
