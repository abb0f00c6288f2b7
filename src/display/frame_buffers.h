// SPDX-License-Identifier: MIT
// The buffers that a frame is drawn into. All are rows of `frame_width` entries, top row first, without
// padding.
#pragma once

#include "core/heap_array.h"

#include <cstddef>
#include <cstdint>

/// Size of the open display in pixels, which every frame is drawn in; before the first opening, what the
/// settings ask for. The state's width and height may differ after settings were loaded by key. Written by
/// the display.
extern std::int32_t frame_width;
extern std::int32_t frame_height;

/// Brightness of each pixel, also its palette index: the frame being drawn, and the frame of the previous
/// pass, which is shown in this one and which blurs start from. Exchanged every pass.
extern HeapArray<std::uint8_t> chunkybuf1;
extern HeapArray<std::uint8_t> chunkybuf2;

/// Depth of each pixel in 8.8, larger is nearer, 0 where nothing is.
extern HeapArray<std::uint16_t> zbuf;

/// Reserved for a bit-plane conversion: exchanged every pass, otherwise untouched.
extern HeapArray<std::uint8_t> planarbuf1;
extern HeapArray<std::uint8_t> planarbuf2;

/// Triangles and dots are drawn in rows 6 to height - 6; the rows above and below belong to clears and texts.
constexpr std::int32_t first_drawn_row = 6;

/// Allocates the five buffers for frames of this size, which becomes `frame_width` and `frame_height`. If the
/// heap refuses one, or the number of pixels is negative or does not fit 32 bits, the program ends with its
/// message.
void allocate_frame_buffers(std::int32_t width, std::int32_t height);

/// Releases the buffers that are held.
void release_frame_buffers();

/// Pixels of a frame.
inline std::size_t frame_pixels() {
    return static_cast<std::size_t>(frame_width) * static_cast<std::size_t>(frame_height);
}
