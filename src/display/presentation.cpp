// SPDX-License-Identifier: MIT
// Shows frames through WriteChunkyPixels.
#include "display/presentation.h"

#include "display/frame_buffers.h"
#include "display/screen.h"

#include <utility>

void show_previous_frame() {
    WriteChunkyPixels(&display_context, 0, 0, static_cast<ULONG>(frame_width - 1),
                      static_cast<ULONG>(frame_height - 1), chunkybuf2.get(), frame_width);
}

void reset_display_bitmap() {
    display_context.BitMap = shown_buffers[0]->sb_BitMap;
}

void swap_frame_buffers() {
    std::swap(chunkybuf1, chunkybuf2);
    std::swap(planarbuf1, planarbuf2);
}
