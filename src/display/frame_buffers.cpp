// SPDX-License-Identifier: MIT
// The memory of the frame buffers, empty while the display is closed.
#include "display/frame_buffers.h"

#include <limits>

std::int32_t frame_width = 320;
std::int32_t frame_height = 256;
HeapArray<std::uint8_t> chunkybuf1;
HeapArray<std::uint8_t> chunkybuf2;
HeapArray<std::uint16_t> zbuf;
bool keeps_depths = false;
HeapArray<std::uint8_t> planarbuf1;
HeapArray<std::uint8_t> planarbuf2;

void allocate_frame_buffers(std::int32_t width, std::int32_t height) {
    const std::int64_t pixels = std::int64_t{width} * height;
    if (pixels < 0 || pixels > std::numeric_limits<std::int32_t>::max()) {
        fatal_exit("Couldn't allocate *chunkybuf1 memory\n");
    }
    frame_width = width;
    frame_height = height;
    const auto count = static_cast<std::size_t>(pixels);
    chunkybuf1 = allocate_or_exit<std::uint8_t>(count, "Couldn't allocate *chunkybuf1 memory\n");
    chunkybuf2 = allocate_or_exit<std::uint8_t>(count, "Couldn't allocate *chunkybuf2 memory\n");
    zbuf = allocate_or_exit<std::uint16_t>(count, "Couldn't allocate *zbuf memory\n");
    planarbuf1 = allocate_or_exit<std::uint8_t>(count, "Couldn't allocate *planarbuf1 memory\n");
    planarbuf2 = allocate_or_exit<std::uint8_t>(count, "Couldn't allocate *planarbuf2 memory\n");
}

void release_frame_buffers() {
    planarbuf1.reset();
    planarbuf2.reset();
    chunkybuf1.reset();
    chunkybuf2.reset();
    zbuf.reset();
}
