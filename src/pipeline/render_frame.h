// SPDX-License-Identifier: MIT
// Draws one frame in any render mode.
#pragma once

/// Draws the current frame into `chunkybuf1` in the render mode `obj_style`. A mode outside 0 .. 6 draws
/// nothing and leaves the buffer as it is.
void render_frame();
