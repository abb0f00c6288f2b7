// SPDX-License-Identifier: MIT
// The loop that draws, shows and handles input, one pass at a time.
#pragma once

/// Prepares the loop on the open display: shows the program's name, starts the clock, counts from 0.
void start_frame_loop();

/// Runs one pass: draws a frame, shows the previous one, draws the texts, handles the waiting events,
/// exchanges the buffers, and asks for a display mode if a key did. Returns true if the user asked to quit.
bool run_pass();
