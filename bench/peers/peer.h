// SPDX-License-Identifier: MIT
// Other software rasterisers that draw the viewer's frames, for comparison.
#pragma once

#include "object/model.h"
#include "object/polygon_list.h"
#include "raster/face_loops.h"

#include <cstdint>
#include <span>

/// A rasteriser that draws the current object into its own buffers.
struct Peer {
    /// The short name in the table.
    const char *name;

    /// What it does in addition to the viewer or leaves out.
    const char *difference;

    /// Opens buffers of this size and loads the texture. Called for every size before its first draw.
    void (*open)(int width, int height);

    /// Clears, and draws the projected points' polygons in a render mode of the viewer (1 to 4).
    void (*draw)(int mode);

    /// Bytes of the last picture that are not background.
    std::size_t (*drawn_pixels)();
};

extern const Peer allegro_peer;
extern const Peer sdl_peer;
extern const Peer osmesa_peer;

/// Calls `begin` for each polygon that faces the viewer, then `triangle` with the point indices of each of
/// its triangles. All peers get their triangles from this walk.
template <typename Begin, typename Triangle>
void for_each_visible_triangle(Begin begin, Triangle triangle) {
    for_each_polygon([&](const Polygon &polygon) {
        const auto &points = polygon.indices;
        if (!polygon.has_valid_indices) {
            return;
        }
        const Vec3 &p = lwopoints3[points[0]];
        const Vec3 &q = lwopoints3[points[1]];
        const Vec3 &r = lwopoints3[points[2]];
        if (!((q.x - p.x) * (r.y - p.y) > (q.y - p.y) * (r.x - p.x))) {
            return;
        }
        begin(p, q, r);
        for (std::size_t k = 2; k < polygon.vertices; ++k) {
            triangle(points[0], points[k - 1], points[k]);
        }
    });
}

/// The distance from the eye of a point with this depth value, for peers that need it.
inline float eye_distance_of(float depth) {
    return (128.0F - depth) * (1.0F / 0.9F) + 250.0F;
}

/// The colour of a point, lit once per frame as in mode 4.
inline float colour_of_point(std::uint16_t point, float (*vertex_light)(const Vec3 &)) {
    if (lwofis[point] == not_yet_lit) {
        lwofis[point] = vertex_light(lwonormals3[point]);
    }
    return lwofis[point];
}
