// SPDX-License-Identifier: MIT
// The frame buffers, empty while the display is closed.
#include "display/frame_buffers.h"

std::int32_t frame_width = 320;
std::int32_t frame_height = 256;
HeapArray<std::uint8_t> chunkybuf1;
HeapArray<std::uint8_t> chunkybuf2;
HeapArray<std::uint16_t> zbuf;
HeapArray<std::uint8_t> planarbuf1;
HeapArray<std::uint8_t> planarbuf2;
