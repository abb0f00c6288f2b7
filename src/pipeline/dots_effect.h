// SPDX-License-Identifier: MIT
// The dots effect of mode 0.
#pragma once

#include <cstddef>
#include <cstdint>

/// Plots 2286 dots along a spiral on a sphere of radius 90. The sphere deforms as `spin_angle` grows and
/// turns with the mouse; the object is not used. Sets `faces_seen` to the number of dots.
void draw_dots_effect();

/// The curve's parameter runs from -effect_range to effect_range in steps of effect_step. One unit of it is
/// 2048 units of angle, which is half a turn around the sphere's axis; the whole range is one turn along the
/// axis.
constexpr double effect_range = 40.0;
constexpr double effect_step = 0.035;
constexpr double effect_angle_units = 2048.0;
constexpr double effect_windings = 80.0;

/// Capacity for the curve's dots: more than these, and a whole number of vectors.
constexpr std::size_t effect_dots_capacity = 2304;

/// How much one unit of spin changes the angle of the third coordinate.
constexpr double deformation_per_spin = 0.0625;

constexpr float effect_sphere_radius = 90.0F;

/// Both forms of plotting the curve, turned by the angles that set_rotation got. They return the number of
/// dots.
namespace plain {
std::int32_t plot_effect_curve();
}
#if ZELVO_SIMD
namespace fast {
std::int32_t plot_effect_curve();
}
#endif
