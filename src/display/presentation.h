// SPDX-License-Identifier: MIT
// Putting a finished frame on the screen, and exchanging the buffers.
#pragma once

/// Writes the frame of the previous pass into the visible bitmap. The system converts it, whatever
/// `internal_c2p_enabled` holds.
void show_previous_frame();

/// Points the drawing context at the screen's own bitmap, which it has been drawing into all along.
void reset_display_bitmap();

/// Exchanges the chunky buffers, so that the frame just drawn is shown in the next pass, and the planar
/// buffers.
void swap_frame_buffers();
