// SPDX-License-Identifier: MIT
// The face loops of the solid modes: every polygon is culled, cut into a fan of triangles, and filled.
#pragma once

#include "core/vec3.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// Whether a triangle on the screen goes round the way that is drawn while `flip` is 0. A degenerate one does
/// not.
inline bool is_front_face(const Vec3 &p1, const Vec3 &p2, const Vec3 &p3) {
    return (p2.x - p1.x) * (p3.y - p1.y) > (p2.y - p1.y) * (p3.x - p1.x);
}

/// Projected corners of several polygons, an array for each coordinate.
struct FaceCorners {
    std::array<const float *, 3> x;
    std::array<const float *, 3> y;
    std::array<const float *, 3> depth;
};

/// Gives each of `count` polygons its colour, 25 .. 255, from three of its projected corners. Equal corners
/// give equal bits however many polygons are lit together, and nothing but `colours` is written.
using FaceLights = void (*)(const FaceCorners &corners, std::size_t count, float *colours);

/// The mark in `lwofis` of a point that has not been lit in this frame.
constexpr float not_yet_lit = -1.0F;

/// Gives each of `count` points its colour, 25 .. 255, in `lwofis` from its rotated normal in `lwonormals3`.
/// Equal normals give equal bits however many points are lit together, and nothing else is written.
using VertexLights = void (*)(const std::uint32_t *points, std::size_t count);

/// Each loop draws the projected points' polygons in list order and counts them in `faces_seen` and
/// `triangles_drawn`, both from 0. Polygons that face away are skipped by the positions of their first three
/// points, unless `doubleside` is set; `flip` turns the test around.

/// Mode 1: the map looked up by the vertices' rotated normals.
void face_loop_envmap();

/// Mode 2: the map looked up by the points' positions in the object. The plain loop lights each polygon and
/// drops the result; the fast one leaves that out.
void face_loop_texturemap(FaceLights face_lights);

/// Mode 3: one colour per polygon.
void face_loop_lightsourced(FaceLights face_lights);

/// Mode 4: one colour per point, interpolated; each point is lit once per frame, into `lwofis`.
void face_loop_gouraud(VertexLights vertex_lights);

/// Mode 5: depth is the colour.
void face_loop_zlight();

/// The loops as the algorithm reads: one polygon, one row and one pixel at a time.
namespace plain {
void face_loop_envmap();
void face_loop_texturemap(FaceLights face_lights);
void face_loop_lightsourced(FaceLights face_lights);
void face_loop_gouraud(VertexLights vertex_lights);
void face_loop_zlight();
} // namespace plain

/// The loops on vectors, with the same results.
#if ZELVO_SIMD
namespace fast {
void face_loop_envmap();
void face_loop_texturemap(FaceLights face_lights);
void face_loop_lightsourced(FaceLights face_lights);
void face_loop_gouraud(VertexLights vertex_lights);
void face_loop_zlight();
} // namespace fast
#endif
