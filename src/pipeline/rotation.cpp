// SPDX-License-Identifier: MIT
// The rotation's sines and cosines, the viewing rotation, and the perspective projection.
#include "pipeline/rotation.h"

#include "core/forms.h"
#include "core/to_int.h"
#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "object/model.h"

#include <cmath>
#include <cstddef>
#include <numbers>

RotationState rotation{0.0F, 1.0F, 0.0F, 1.0F, 0.0F, 1.0F};

namespace {

float tilt_angle(std::int32_t counts) {
    return static_cast<float>(counts / counts_per_radian);
}

template <typename Vector>
Vector rotate(const Vector &in) {
    const RotationState &r = rotation;
    const auto x1 = in.x * r.cos_c - in.y * r.sin_c;
    const auto y1 = in.x * r.sin_c + in.y * r.cos_c;

    const auto y2 = in.z * r.sin_a + y1 * r.cos_a;
    const auto z2 = in.z * r.cos_a - y1 * r.sin_a;

    const auto x3 = x1 * r.cos_b - z2 * r.sin_b;
    const auto z3 = x1 * r.sin_b + z2 * r.cos_b;
    return {x3, y2, z3};
}

/// Sets the rotation by the mouse and the spin. The half turns about x and y undo the mirrored x axis of the
/// prepared object: at rest it appears the right way round.
void set_viewing_rotation() {
    constexpr double half_turn = std::numbers::pi;
    const double a = tilt_angle(viewer.tilt_y) + half_turn;
    const double b = tilt_angle(viewer.tilt_x) + half_turn - viewer.spin_angle * radians_per_spin;
    set_rotation(a, b, 0.0);
}

/// Rounds to thousandths by adding a half and truncating toward zero, which rounds only positive numbers to
/// the nearest.
float snap(float value) {
    return static_cast<float>(to_int(value * 1000.0F + 0.5)) * (1.0F / 1000.0F);
}

} // namespace

void set_rotation(double a, double b, double c) {
    rotation.sin_a = static_cast<float>(std::sin(a));
    rotation.cos_a = static_cast<float>(std::cos(a));
    rotation.sin_b = static_cast<float>(std::sin(b));
    rotation.cos_b = static_cast<float>(std::cos(b));
    rotation.sin_c = static_cast<float>(std::sin(c));
    rotation.cos_c = static_cast<float>(std::cos(c));
}

Vec3 rotate_point(const Vec3 &in) {
    return rotate(in);
}

DVec3 rotate_point_d(const DVec3 &in) {
    return rotate(in);
}

namespace plain {

void project_points(const Projection &projection, std::size_t first) {
    const auto points = static_cast<std::size_t>(points_to_process());
    for (std::size_t i = first; i < points; ++i) {
        const Vec3 p = rotate_point(lwopoints2[i]);
        const float x = p.x * eye_distance / (p.z + eye_distance) * projection.scale_x + projection.centre_x;
        const float y = p.y * eye_distance / (p.z + eye_distance) * projection.scale_y + projection.centre_y;
        const auto depth = static_cast<float>(p.z * depth_per_unit + depth_at_origin);
        lwopoints3[i] = {snap(x), snap(y), snap(depth)};
    }
}

void rotate_normals(std::size_t first) {
    const auto points = static_cast<std::size_t>(points_to_process());
    for (std::size_t i = first; i < points; ++i) {
        lwonormals3[i] = rotate_point(lwonormals2[i]);
    }
}

} // namespace plain

void transform_and_project() {
    set_viewing_rotation();
    const Projection projection{
        static_cast<float>(frame_width * (1.0 / projected_width)),
        static_cast<float>(frame_height * (1.0 / projected_height)),
        static_cast<float>(frame_width * 0.5),
        static_cast<float>(frame_height * 0.5),
    };
    if (draws_fast) {
        fast::project_points(projection);
    } else {
        plain::project_points(projection);
    }
}

void rotate_normals() {
    set_viewing_rotation();
    if (draws_fast) {
        fast::rotate_normals();
    } else {
        plain::rotate_normals();
    }
}

void rotate_light() {
    set_rotation(tilt_angle(viewer.tilt_y), -tilt_angle(viewer.tilt_x), 0.0);
    viewer.light_source = {viewer.light_base.z, viewer.light_base.y, viewer.light_base.x};
    viewer.light = rotate_point(viewer.light_source);
}
