// SPDX-License-Identifier: MIT
// The dots effect of mode 0.
#pragma once

/// Plots a spiral of 2286 dots wound round a sphere of radius 90, which deforms as `spin_angle` grows and
/// turns with the mouse. Does not depend on the object. Counts the dots in `faces_seen`.
void draw_dots_effect();
