// SPDX-License-Identifier: MIT
// A parametric curve of dots, rotated and projected in double precision.
#include "pipeline/dots_effect.h"

#include "display/frame_buffers.h"
#include "pipeline/rotation.h"
#include "pipeline/sine_table.h"
#include "raster/dots.h"
#include "raster/fixed_point.h"

namespace {

/// The curve's parameter runs over +-range in steps; at 2048 angle units each, a unit of it is half a turn
/// round the sphere's axis, and the whole range is a turn along it.
constexpr double range = 40.0;
constexpr double step = 0.035;
constexpr double angle_units = 2048.0;
constexpr double windings = 80.0;

/// How fast the third coordinate's rate grows with the spin.
constexpr double deformation_per_spin = 0.0625;

constexpr float sphere_radius = 90.0F;

/// Sines take any angle modulo a turn.
std::uint32_t table_angle(double units) {
    return static_cast<std::uint32_t>(to_int(units));
}

DVec3 curve_point(double t, double spin) {
    const std::uint32_t around = table_angle(t * angle_units);
    const std::uint32_t along = table_angle(t * angle_units / windings);
    const std::uint32_t across = table_angle(t * angle_units / windings * spin * deformation_per_spin);
    return {sphere_radius * sine(around) * cosine(along), sphere_radius * cosine(around) * cosine(along),
            sphere_radius * sine(across)};
}

} // namespace

void draw_dots_effect() {
    faces_seen = 0;
    set_rotation(-static_cast<double>(viewer.tilt_y) / 80.0, viewer.tilt_x / 80.0, viewer.spin_angle * 0.004);
    for (double t = -range; t < range; t += step) {
        const DVec3 p = rotate_point_d(curve_point(t, viewer.spin_angle));
        const double distance = p.z + eye_distance;
        const double x = eye_distance * p.x / distance / 320.0 * frame_width + frame_width * 0.5;
        const double y = eye_distance * p.y / distance * 0.00390625 * frame_height + frame_height * 0.5;
        const double radius = 2.0 * (eye_distance / distance);
        plot_dot(static_cast<float>(x), static_cast<float>(y), static_cast<float>(radius));
        ++faces_seen;
    }
}
