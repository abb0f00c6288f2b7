// SPDX-License-Identifier: MIT
// Plots a parametric curve of dots, rotated and projected in double precision.
#include "pipeline/dots_effect.h"

#include "core/forms.h"
#include "core/to_int.h"
#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "pipeline/rotation.h"
#include "pipeline/sine_table.h"
#include "raster/dots.h"

namespace {

/// An angle for the sine table, which wraps at a full turn.
std::uint32_t table_angle(double units) {
    return static_cast<std::uint32_t>(to_int(units));
}

DVec3 curve_point(double t, double spin) {
    const std::uint32_t around = table_angle(t * effect_angle_units);
    const std::uint32_t along = table_angle(t * effect_angle_units / effect_windings);
    const std::uint32_t across =
        table_angle(t * effect_angle_units / effect_windings * spin * deformation_per_spin);
    return {effect_sphere_radius * sine(around) * cosine(along),
            effect_sphere_radius * cosine(around) * cosine(along), effect_sphere_radius * sine(across)};
}

} // namespace

namespace plain {

std::int32_t plot_effect_curve() {
    std::int32_t dots = 0;
    for (double t = -effect_range; t < effect_range; t += effect_step) {
        const DVec3 p = rotate_point_d(curve_point(t, viewer.spin_angle));
        const double distance = p.z + eye_distance;
        const double x = eye_distance * p.x / distance / projected_width * frame_width + frame_width * 0.5;
        const double y = eye_distance * p.y / distance / projected_height * frame_height + frame_height * 0.5;
        const double radius = 2.0 * (eye_distance / distance);
        plot_dot(static_cast<float>(x), static_cast<float>(y), static_cast<float>(radius));
        ++dots;
    }
    return dots;
}

} // namespace plain

void draw_dots_effect() {
    set_rotation(-static_cast<double>(viewer.tilt_y) / counts_per_radian, viewer.tilt_x / counts_per_radian,
                 viewer.spin_angle * radians_per_spin);
    faces_seen = draws_fast ? fast::plot_effect_curve() : plain::plot_effect_curve();
}
