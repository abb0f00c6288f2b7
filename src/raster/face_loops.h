// SPDX-License-Identifier: MIT
// The face loops of the solid modes: each polygon is culled, or cut into a fan of triangles and filled.
#pragma once

#include "core/vec3.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// Whether a triangle on the screen has the winding that is drawn while `flip` is 0. A degenerate triangle
/// does not.
inline bool is_front_face(const Vec3 &p1, const Vec3 &p2, const Vec3 &p3) {
    return (p2.x - p1.x) * (p3.y - p1.y) > (p2.y - p1.y) * (p3.x - p1.x);
}

/// The first three projected corners of several polygons, an array per coordinate of each corner.
struct FaceCorners {
    std::array<const float *, 3> x;
    std::array<const float *, 3> y;
    std::array<const float *, 3> depth;
};

/// Computes the colours of `count` polygons, 25 .. 255, from their corners. Equal corners give equal bits,
/// however many polygons are lit in one call. Nothing but `colours` is written.
using FaceLights = void (*)(const FaceCorners &corners, std::size_t count, float *colours);

/// The mark in `lwofis` of a point that has not been lit in this frame.
constexpr float not_yet_lit = -1.0F;

/// Computes the colours of `count` points, 25 .. 255, from their rotated normals in `lwonormals3` into
/// `lwofis`. Equal normals give equal bits, however many points are lit in one call. Nothing else is written.
using VertexLights = void (*)(const std::uint32_t *points, std::size_t count);

/// Whether the loops below begin with cleared depths of their own, because they draw the frame in bands.
/// Otherwise `zbuf` must be cleared before them.
bool face_loops_clear_depths();

/// Each loop draws the polygons of the projected points in list order and counts them in `faces_seen` and
/// `triangles_drawn`, both from 0. Polygons that face away are skipped, unless `doubleside` is set. Their
/// first three points decide it, and `flip` reverses the test.

/// Mode 1: the texture at the vertices' rotated normals.
void face_loop_envmap();

/// Mode 2: the texture at the points' positions in the object. The plain loop lights each polygon and ignores
/// the result; the fast one leaves this out.
void face_loop_texturemap(FaceLights face_lights);

/// Mode 3: one colour per polygon.
void face_loop_lightsourced(FaceLights face_lights);

/// Mode 4: one colour per point, interpolated; each point is lit once per frame, into `lwofis`.
void face_loop_gouraud(VertexLights vertex_lights);

/// Mode 5: depth is the colour.
void face_loop_zlight();

/// The loops that draw one polygon, one row and one pixel at a time.
namespace plain {
constexpr bool draws_in_bands() {
    return false;
}
void face_loop_envmap();
void face_loop_texturemap(FaceLights face_lights);
void face_loop_lightsourced(FaceLights face_lights);
void face_loop_gouraud(VertexLights vertex_lights);
void face_loop_zlight();
} // namespace plain

/// The loops on vectors, with the same results.
#if ZELVO_SIMD
namespace fast {
/// Whether the current frame is drawn in bands (raster/simd/bands.h).
bool draws_in_bands();
void face_loop_envmap();
void face_loop_texturemap(FaceLights face_lights);
void face_loop_lightsourced(FaceLights face_lights);
void face_loop_gouraud(VertexLights vertex_lights);
void face_loop_zlight();
} // namespace fast
#endif
