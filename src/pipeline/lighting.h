// SPDX-License-Identifier: MIT
// Light on a polygon and light on a point: 25 facing away from the light, 255 facing it.
#pragma once

#include "core/vec3.h"
#include "raster/face_loops.h"

/// The colour of a surface that the light does not reach, and what full light adds.
constexpr float ambient_light = 25.0F;
constexpr double diffuse_light = 230.0;

/// Colour of the polygon whose first corners are at these projected points (x, y in pixels, depth). The light
/// is `light`, which stays fixed to the screen. Three points on a line give NaN.
float face_light(const Vec3 &p0, const Vec3 &p1, const Vec3 &p2);

/// Colour of a point from its rotated normal. The normal lives in object space, where x and y run against the
/// screen's, hence the signs. A zero normal gives NaN.
float vertex_light(const Vec3 &normal);

/// face_light for `count` polygons.
void face_lights(const FaceCorners &corners, std::size_t count, float *colours);

/// vertex_light for `count` points, from `lwonormals3` into `lwofis`.
void vertex_lights(const std::uint32_t *points, std::size_t count);

/// Marks every point's colour in `lwofis` as not yet lit.
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
