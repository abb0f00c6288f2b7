// SPDX-License-Identifier: MIT
// How long the spans of a frame are.
#pragma once

/// The mean length in pixels of the current frame's spans, including hidden ones. A span is a row of a
/// triangle that has pixels. Draws each front-facing triangle alone to count its spans, and leaves the depth
/// buffer cleared. 0 for a frame without triangles.
double mean_span_length();
