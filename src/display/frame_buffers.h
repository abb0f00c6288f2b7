// SPDX-License-Identifier: MIT
// The buffers that a frame is drawn into. All consist of rows of `frame_width` entries, top row first,
// without padding.
#pragma once

#include "core/heap_array.h"

#include <cstddef>
#include <cstdint>

/// Size of the open display and of every frame, in pixels; before a display was opened, the size that the
/// settings ask for. The state's width and height differ from it after a key loaded other settings. Written
/// by allocate_frame_buffers and begin_run.
extern std::int32_t frame_width;
extern std::int32_t frame_height;

/// Brightness of each pixel, which is also its palette index: the frame that is being drawn, and the frame of
/// the previous pass, which this pass shows and which fades and blurs start from. Exchanged in every pass.
extern HeapArray<std::uint8_t> chunkybuf1;
extern HeapArray<std::uint8_t> chunkybuf2;

/// Depth of each pixel in 8.8. Larger is nearer; 0 where nothing was drawn.
extern HeapArray<std::uint16_t> zbuf;

/// Whether faces must leave their depths in `zbuf`. Otherwise a large frame leaves it as it was. False from
/// the start; set by whoever reads `zbuf`.
extern bool keeps_depths;

/// Reserved for a bit-plane conversion: exchanged in every pass, otherwise unused.
extern HeapArray<std::uint8_t> planarbuf1;
extern HeapArray<std::uint8_t> planarbuf2;

/// Triangles and dots are drawn in rows 6 to height - 6 only. Clears and texts write the rows above and
/// below, too.
constexpr std::int32_t first_drawn_row = 6;

/// Allocates the five buffers for frames of this size, which becomes `frame_width` and `frame_height`. The
/// program ends if the heap refuses one, or if the number of pixels is negative or does not fit into 32 bits.
void allocate_frame_buffers(std::int32_t width, std::int32_t height);

/// Releases the buffers that are held.
void release_frame_buffers();

/// Number of pixels of a frame.
inline std::size_t frame_pixels() {
    return static_cast<std::size_t>(frame_width) * static_cast<std::size_t>(frame_height);
}
