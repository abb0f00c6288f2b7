// SPDX-License-Identifier: MIT
// Showing a finished frame, and exchanging the buffers.
#pragma once

/// Writes the frame of the previous pass into the visible bitmap. The system converts it, whatever the value
/// of `internal_c2p_enabled`.
void show_previous_frame();

/// Sets the drawing context's bitmap to the screen's own, which it already is.
void reset_display_bitmap();

/// Exchanges the chunky buffers, so that the next pass shows the frame that was just drawn, and the planar
/// buffers.
void swap_frame_buffers();
