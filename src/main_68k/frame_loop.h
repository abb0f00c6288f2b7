// SPDX-License-Identifier: MIT
// The loop that draws, shows and steers.
#pragma once

/// Runs passes on the open display until the user quits: draws a frame, shows the one before, draws the
/// texts, handles the waiting events, exchanges the buffers.
void run_frame_loop();
