// SPDX-License-Identifier: MIT
// One frame: the table of render modes and the order of each mode's stages.
#pragma once

/// Draws the current frame into `chunkybuf1` in the render mode `obj_style`. A mode outside 0 .. 6 draws
/// nothing and leaves the buffer as it is.
void render_frame();
