// SPDX-License-Identifier: MIT
// The dots effect of mode 0.
#pragma once

#include <cstddef>
#include <cstdint>

/// Plots a spiral of 2286 dots wound round a sphere of radius 90, which deforms as `spin_angle` grows and
/// turns with the mouse. Does not depend on the object. Counts the dots in `faces_seen`.
void draw_dots_effect();

/// The curve's parameter runs over +-effect_range in steps; at 2048 angle units each, a unit of it is half a
/// turn round the sphere's axis, and the whole range is a turn along it.
constexpr double effect_range = 40.0;
constexpr double effect_step = 0.035;
constexpr double effect_angle_units = 2048.0;
constexpr double effect_windings = 80.0;

/// Room for all dots of the curve, which has a whole number of vectors more than it has dots.
constexpr std::size_t effect_dots_capacity = 2304;

/// How fast the third coordinate's rate grows with the spin.
constexpr double deformation_per_spin = 0.0625;

constexpr float effect_sphere_radius = 90.0F;

/// Both forms of plotting the curve by the set angles; they return the number of dots.
namespace plain {
std::int32_t plot_effect_curve();
}
#if ZELVO_SIMD
namespace fast {
std::int32_t plot_effect_curve();
}
#endif
