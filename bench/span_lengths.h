// SPDX-License-Identifier: MIT
// How long the spans of a frame are.
#pragma once

/// The mean number of pixels of the spans, rows of one triangle that have pixels, which the current frame is
/// drawn by, hidden ones among them. Each visible triangle is drawn alone to count them; leaves the depth
/// buffer cleared. 0 for a frame without triangles.
double mean_span_length();
