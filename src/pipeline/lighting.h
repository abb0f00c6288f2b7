// SPDX-License-Identifier: MIT
// The colour of a polygon or of a point by its angle to the light: 25 facing away from it, 255 facing it.
#pragma once

#include "core/vec3.h"
#include "raster/face_loops.h"

/// The colour of a surface that the light does not reach, and what full light adds to it.
constexpr float ambient_light = 25.0F;
constexpr double diffuse_light = 230.0;

/// Colour of the polygon whose first three corners are at these projected points (x and y in pixels, depth),
/// by the light in `viewer.light`, which does not turn with the object. Three points on a line give NaN.
float face_light(const Vec3 &p0, const Vec3 &p1, const Vec3 &p2);

/// Colour of a point from its rotated normal. The normal's x and y point against those of the screen, so
/// their products are subtracted. A zero normal gives NaN.
float vertex_light(const Vec3 &normal);

/// Computes face_light for `count` polygons.
void face_lights(const FaceCorners &corners, std::size_t count, float *colours);

/// Computes vertex_light for `count` points, from `lwonormals3` into `lwofis`.
void vertex_lights(const std::uint32_t *points, std::size_t count);

/// Marks all points in `lwofis` as not yet lit.
void reset_vertex_colours();

namespace plain {
void face_lights(const FaceCorners &corners, std::size_t count, float *colours);
void vertex_lights(const std::uint32_t *points, std::size_t count);
} // namespace plain
#if ZELVO_SIMD
namespace fast {
void face_lights(const FaceCorners &corners, std::size_t count, float *colours);
void vertex_lights(const std::uint32_t *points, std::size_t count);
} // namespace fast
#endif
