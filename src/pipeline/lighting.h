// SPDX-License-Identifier: MIT
// Light on a polygon and light on a point: 25 facing away from the light, 255 facing it.
#pragma once

#include "main_68k/viewer_state.h"

/// Colour of the polygon whose first corners are at these projected points (x, y in pixels, depth). The light
/// is `light`, which stays fixed to the screen. Three points on a line give not-a-number.
float face_light(const Vec3 &p0, const Vec3 &p1, const Vec3 &p2);

/// Colour of a point from its rotated normal. The normal lives in object space, where x and y run against the
/// screen's, hence the signs. A zero normal gives not-a-number.
float vertex_light(const Vec3 &normal);

/// Marks every point's colour in `lwofis` as not yet lit.
void reset_vertex_colours();
