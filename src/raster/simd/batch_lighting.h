// SPDX-License-Identifier: MIT
// The points and the light of a batch of triangles, one at a time or by the caller's light for many.
#pragma once

#include "raster/face_loops.h"
#include "raster/simd/triangle_batch.h"

namespace fast {

/// Reads the point indices of the batch's corners from the polygon list.
void number_corners(TriangleBatch &batch);

/// Lights every triangle of the batch by its polygon's first three corners, into `light`.
void light_faces(TriangleBatch &batch, FaceLights face_lights);

/// Lights those points of the batch that are not yet lit, into `lwofis`.
void light_points(const TriangleBatch &batch, VertexLights vertex_lights);

} // namespace fast
