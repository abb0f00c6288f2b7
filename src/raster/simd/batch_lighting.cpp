// SPDX-License-Identifier: MIT
// The points and the light of a batch of triangles.
#include "raster/simd/batch_lighting.h"

#include "object/model.h"
#include "object/polygon_list.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace fast {

void number_corners(TriangleBatch &batch) {
    const std::span<const std::uint16_t> words = polygon_words();
    for (std::size_t i = 0; i < batch.count; ++i) {
        const std::size_t second = batch.second_corner[i];
        batch.point[0][i] = words[batch.first_corner[i]];
        batch.point[1][i] = words[second];
        batch.point[2][i] = words[second + 1];
    }
}

void light_faces(TriangleBatch &batch, FaceLights face_lights) {
    FaceCorners corners;
    for (std::size_t c = 0; c < 3; ++c) {
        corners.x[c] = batch.lit_x[c].data();
        corners.y[c] = batch.lit_y[c].data();
        corners.depth[c] = batch.lit_depth[c].data();
    }
    face_lights(corners, batch.count, batch.light.data());
}

// A point is lit by the first batch that uses it. The plain loop lights it at the same polygon, alone; a
// light gives the same bits either way.
void light_points(const TriangleBatch &batch, VertexLights vertex_lights) {
    std::array<std::uint32_t, 3 * TriangleBatch::capacity> unlit;
    std::size_t count = 0;
    for (std::size_t i = 0; i < batch.count; ++i) {
        for (const auto &points : batch.point) {
            float &colour = lwofis[points[i]];
            if (colour == not_yet_lit) {
                // No longer the mark, so that the point is not listed twice.
                colour = 0.0F;
                unlit[count++] = points[i];
            }
        }
    }
    vertex_lights(unlit.data(), count);
}

} // namespace fast
