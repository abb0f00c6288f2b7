// SPDX-License-Identifier: MIT
// Turns the object, its normals or the light, and projects the object onto the screen.
#pragma once

#include "core/vec3.h"

#include <cstddef>

/// Three double-precision coordinates, for the dots effect.
struct DVec3 {
    double x;
    double y;
    double z;
};

/// Sines and cosines of the angles a, b and c. Written by set_rotation, for every rotation until its next
/// call.
struct RotationState {
    float sin_a;
    float cos_a;
    float sin_b;
    float cos_b;
    float sin_c;
    float cos_c;
};
extern RotationState rotation;

/// Mouse counts that turn the object by one radian, and radians per unit of spin.
constexpr double counts_per_radian = 80.0;
constexpr double radians_per_spin = 0.004;

/// The frame that the projection is made for, in pixels; it is scaled from there to the frame's size. The
/// projection multiplies by the inverse of the width and the dots effect divides by the width, which differ
/// in the last bit.
constexpr double projected_width = 320.0;
constexpr double projected_height = 256.0;

/// Depth of the origin, and what a unit of z adds to it.
constexpr double depth_at_origin = 128.0;
constexpr double depth_per_unit = -0.9;

/// How the projection scales to the frame's size, and the frame's centre.
struct Projection {
    float scale_x;
    float scale_y;
    float centre_x;
    float centre_y;
};

/// Distance of the eye from the origin.
constexpr float eye_distance = 250.0F;

/// Sets the angles of all following rotations, in radians: `a` about x, `b` about y, `c` about z. Sines and
/// cosines are computed in double and stored as float.
void set_rotation(double a, double b, double c);

/// `in` turned about z, then x, then y, by the angles that set_rotation got.
Vec3 rotate_point(const Vec3 &in);

/// The same in double precision, with the same float sines and cosines.
DVec3 rotate_point_d(const DVec3 &in);

/// Turns `lwopoints2` by the mouse and the spin and projects it into `lwopoints3`: in perspective from 250
/// units in front of the origin, scaled to the frame's size, with the depth 128 - 0.9 z, all in whole
/// thousandths.
void transform_and_project();

/// Turns `lwonormals2` by the mouse and the spin into `lwonormals3`.
void rotate_normals();

/// Turns the light by the mouse: reverses the order of the components of `light_base`, rotates them, and
/// stores the result in `light`.
void rotate_light();

/// Both forms of the two stages that process every point, by the angles that set_rotation got. The plain
/// forms can start at the point `first`: they process the points after the last whole vector.
namespace plain {
void project_points(const Projection &projection, std::size_t first = 0);
void rotate_normals(std::size_t first = 0);
} // namespace plain
#if ZELVO_SIMD
namespace fast {
void project_points(const Projection &projection);
void rotate_normals();
} // namespace fast
#endif
