// SPDX-License-Identifier: MIT
// What is done to an object once, before its first frame.
#pragma once

#include "core/vec3.h"

#include <cstddef>

/// Builds the tables of the dots, fits the object into a sphere of radius 110 around the origin with its x
/// axis mirrored, projects it once, and builds the vertex normals. Called once, after the object was read. It
/// also changes `point_chunk`. If all points of an object are the same, they become NaN.
void prepare_object();

/// The normal of a triangle, (c - b) x (a - b), not scaled to any length.
Vec3 face_normal(const Vec3 &a, const Vec3 &b, const Vec3 &c);

/// Scales `v` in place to `length`. The squares are summed in float; the factor is computed in double and
/// rounded to float once, so that every processor gets the same bits. A zero vector becomes NaN.
void scale_to_length(Vec3 &v, float length);

/// Length of a prepared vertex normal. It keeps map coordinates within 128 of the map's centre.
constexpr float normal_length = 123.0F;

/// Radius of the prepared object. It keeps the object on the screen for an eye 250 units away.
constexpr double prepared_radius = 110.0;

/// Both forms of the two steps that process every point or polygon. fit_object needs at least one point; it
/// fits `point_chunk` into the sphere and copies it to `lwopoints2`. build_vertex_normals computes
/// `lwonormals2` from `lwopoints2`.
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
