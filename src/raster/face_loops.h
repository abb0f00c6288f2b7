// SPDX-License-Identifier: MIT
// The face loops of the solid modes: every polygon is culled, cut into a fan of triangles, and filled.
#pragma once

#include "main_68k/viewer_state.h"

/// Colour of a polygon, 25 .. 255, from three of its projected corners.
using FaceLight = float (*)(const Vec3 &p0, const Vec3 &p1, const Vec3 &p2);

/// Colour of a point, 25 .. 255, from its rotated normal.
using VertexLight = float (*)(const Vec3 &normal);

/// Each loop draws the projected points' polygons in list order and counts them in `faces_seen` and
/// `triangles_drawn`, both from 0. Polygons that face away are skipped by the positions of their first three
/// points, unless `doubleside` is set; `flip` turns the test around.

/// Mode 1: the map looked up by the vertices' rotated normals.
void face_loop_envmap();

/// Mode 2: the map looked up by the points' positions in the object. Lights each polygon and drops the
/// result.
void face_loop_texturemap(FaceLight face_light);

/// Mode 3: one colour a polygon.
void face_loop_lightsourced(FaceLight face_light);

/// Mode 4: a colour a point, interpolated; each point is lit once a frame, into `lwofis`.
void face_loop_gouraud(VertexLight vertex_light);

/// Mode 5: depth is the colour.
void face_loop_zlight();
