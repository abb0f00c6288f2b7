// SPDX-License-Identifier: MIT
// The face loops of the solid modes: every polygon is culled, cut into a fan of triangles, and filled.
#pragma once

#include "main_68k/viewer_state.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// Colour of a polygon, 25 .. 255, from three of its projected corners.
using FaceLight = float (*)(const Vec3 &p0, const Vec3 &p1, const Vec3 &p2);

/// Colour of a point, 25 .. 255, from its rotated normal.
using VertexLight = float (*)(const Vec3 &normal);

/// Projected corners of several polygons, an array for each coordinate. Arrays may be read, and results
/// written, up to 15 entries beyond the last.
struct FaceCorners {
    std::array<const float *, 3> x;
    std::array<const float *, 3> y;
    std::array<const float *, 3> depth;
};

/// A FaceLight for `count` polygons at once, with the same bits as one at a time and no other effect.
using FaceLights = void (*)(const FaceCorners &corners, std::size_t count, float *colours);

/// A VertexLight for `count` points at once, from `lwonormals3` into `lwofis`, with the same bits as one at a
/// time and no other effect.
using VertexLights = void (*)(const std::uint32_t *points, std::size_t count);

/// Each loop draws the projected points' polygons in list order and counts them in `faces_seen` and
/// `triangles_drawn`, both from 0. Polygons that face away are skipped by the positions of their first three
/// points, unless `doubleside` is set; `flip` turns the test around. A loop that lights takes the same light
/// in two forms; without the second, which only the fast loops use, it lights one polygon or point at a time.

/// Mode 1: the map looked up by the vertices' rotated normals.
void face_loop_envmap();

/// Mode 2: the map looked up by the points' positions in the object. Lights each polygon and drops the
/// result.
void face_loop_texturemap(FaceLight face_light, FaceLights face_lights = nullptr);

/// Mode 3: one colour a polygon.
void face_loop_lightsourced(FaceLight face_light, FaceLights face_lights = nullptr);

/// Mode 4: a colour a point, interpolated; each point is lit once a frame, into `lwofis`.
void face_loop_gouraud(VertexLight vertex_light, VertexLights vertex_lights = nullptr);

/// Mode 5: depth is the colour.
void face_loop_zlight();

/// The loops as the algorithm reads, a polygon, a row and a pixel at a time.
namespace plain {
void face_loop_envmap();
void face_loop_texturemap(FaceLight face_light);
void face_loop_lightsourced(FaceLight face_light);
void face_loop_gouraud(VertexLight vertex_light);
void face_loop_zlight();
} // namespace plain

/// The loops on vectors, with the same results.
namespace fast {
void face_loop_envmap();
void face_loop_texturemap(FaceLight face_light, FaceLights face_lights);
void face_loop_lightsourced(FaceLight face_light, FaceLights face_lights);
void face_loop_gouraud(VertexLight vertex_light, VertexLights vertex_lights);
void face_loop_zlight();
} // namespace fast
