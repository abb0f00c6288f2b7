// SPDX-License-Identifier: MIT
// What is done once to an object before its first frame.
#pragma once

#include "core/vec3.h"

#include <cstddef>

/// Builds the tables of the dots, fits the object into a sphere of radius 110 about the origin with its x
/// mirrored, projects it once, and builds the vertex normals. Runs once, after the object was read; it
/// changes the points as read in place. An object without extent gets points that are not finite.
void prepare_object();

/// The unnormalised normal of a triangle, (C - B) x (A - B).
Vec3 face_normal(const Vec3 &a, const Vec3 &b, const Vec3 &c);

/// Scales `v` in place to `length`. The squares are summed in float, the quotient is taken in double and
/// rounded once, so that equal vectors give equal bits on every processor. A zero vector gives NaN.
void scale_to_length(Vec3 &v, float length);

/// Length of a prepared vertex normal, which keeps map coordinates within 128 of the map's centre.
constexpr float normal_length = 123.0F;

/// Radius of the prepared object, which keeps it on the screen from an eye 250 units away.
constexpr double prepared_radius = 110.0;

/// Both forms of the two steps that touch every point or polygon: fit_object puts the points as read, one at
/// least, into the sphere, in place and in `lwopoints2`; build_vertex_normals makes `lwonormals2` of them.
namespace plain {
void fit_object();
void build_vertex_normals();
} // namespace plain
#if ZELVO_SIMD
namespace fast {
void fit_object();
void build_vertex_normals();
} // namespace fast
#endif
