// SPDX-License-Identifier: MIT
// One walk, one back-face test and one fan for all modes; they differ in the filler and in the slots they
// fill.
#include "raster/face_loops.h"

#include "object/model.h"
#include "raster/drawing_path.h"
#include "raster/polygon_list.h"
#include "raster/triangle_fillers.h"

#include <array>

namespace {

/// The three points of a fan's triangle.
using Corners = std::array<std::uint16_t, 3>;

/// Whether the triangle (p1, p2, p3) on the screen is one that `flip` chooses to skip. A degenerate one
/// counts as facing away.
bool faces_away(const Vec3 &p1, const Vec3 &p2, const Vec3 &p3) {
    const bool front = (p2.x - p1.x) * (p3.y - p1.y) > (p2.y - p1.y) * (p3.x - p1.x);
    return front ? viewer.flip == 1 : viewer.flip == 0;
}

/// Copies the corners' projected positions and depths into slots 0 to 8.
void place_corners(TriangleParams &block, const Corners &corners) {
    std::size_t slot = 0;
    for (const std::uint16_t corner : corners) {
        const Vec3 &point = lwopoints3[corner];
        block[slot++] = point.x;
        block[slot++] = point.y;
        block[slot++] = point.z;
    }
}

/// Copies x and y of each corner's record into the map slots 12 to 17.
void place_map_coordinates(TriangleParams &block, const Corners &corners, const HeapArray<Vec3> &records) {
    std::size_t slot = 12;
    for (const std::uint16_t corner : corners) {
        block[slot++] = records[corner].x;
        block[slot++] = records[corner].y;
    }
}

/// Walks all polygons. `begin_polygon` is called once for each visible one with the block's first triangle in
/// place, `fill` for each triangle of its fan.
template <typename BeginPolygon, typename Fill>
void draw_polygons(TriangleParams &block, BeginPolygon begin_polygon, Fill fill) {
    faces_seen = 0;
    triangles_drawn = 0;
    std::int32_t drawn_before = 0;
    const std::int32_t alike = for_each_polygon([&](const Polygon &polygon) {
        const auto &points = polygon.indices;
        ++faces_seen;
        drawn_before = triangles_drawn;
        if (!polygon.is_usable) {
            return;
        }
        if (viewer.doubleside == 0 &&
            faces_away(lwopoints3[points[0]], lwopoints3[points[1]], lwopoints3[points[2]])) {
            return;
        }
        for (std::size_t k = 2; k == 2 || k < polygon.vertices; ++k) {
            const Corners corners{points[0], points[k - 1], points[k]};
            place_corners(block, corners);
            if (k == 2) {
                begin_polygon();
            }
            fill(corners);
            ++triangles_drawn;
        }
    });
    // What is left is like the last polygon, down to the pixels.
    faces_seen += alike;
    triangles_drawn += alike * (triangles_drawn - drawn_before);
}

/// Lights a polygon by the three records that stand in the block.
float light_of_block(FaceLight face_light, const TriangleParams &block) {
    return face_light({block[0], block[1], block[2]}, {block[3], block[4], block[5]},
                      {block[6], block[7], block[8]});
}

/// For the loops that do nothing once a polygon.
constexpr auto nothing = [] {};

} // namespace

namespace plain {

void face_loop_envmap() {
    TriangleParams block{};
    draw_polygons(block, nothing, [&block](const Corners &corners) {
        place_map_coordinates(block, corners, lwonormals3);
        fill_tri_mapped(&block);
    });
}

void face_loop_texturemap(FaceLight face_light) {
    TriangleParams block{};
    draw_polygons(
        block, [&block, face_light] { block[9] = light_of_block(face_light, block); },
        [&block](const Corners &corners) {
            place_map_coordinates(block, corners, lwopoints2);
            fill_tri_mapped(&block);
        });
}

void face_loop_lightsourced(FaceLight face_light) {
    TriangleParams block{};
    draw_polygons(
        block, [&block, face_light] { block[9] = light_of_block(face_light, block); },
        [&block](const Corners &) { fill_tri_flat(&block); });
}

void face_loop_gouraud(VertexLight vertex_light) {
    TriangleParams block{};
    draw_polygons(block, nothing, [&block, vertex_light](const Corners &corners) {
        std::size_t slot = 9;
        for (const std::uint16_t corner : corners) {
            if (lwofis[corner] == -1.0F) {
                lwofis[corner] = vertex_light(lwonormals3[corner]);
            }
            block[slot++] = lwofis[corner];
        }
        fill_tri_gouraud(&block);
    });
}

void face_loop_zlight() {
    TriangleParams block{};
    draw_polygons(block, nothing, [&block](const Corners &) { fill_tri_zcolour(&block); });
}

} // namespace plain

namespace {

/// A list that goes on behind the file's end is walked by the plain loops, which know where to stop.
bool draws_list_fast() {
    return draws_fast && unread_polygon_words == 0;
}

} // namespace

void face_loop_envmap() {
    draws_list_fast() ? fast::face_loop_envmap() : plain::face_loop_envmap();
}

void face_loop_texturemap(FaceLight face_light, FaceLights face_lights) {
    draws_list_fast() ? fast::face_loop_texturemap(face_light, face_lights)
                      : plain::face_loop_texturemap(face_light);
}

void face_loop_lightsourced(FaceLight face_light, FaceLights face_lights) {
    draws_list_fast() ? fast::face_loop_lightsourced(face_light, face_lights)
                      : plain::face_loop_lightsourced(face_light);
}

void face_loop_gouraud(VertexLight vertex_light, VertexLights vertex_lights) {
    draws_list_fast() ? fast::face_loop_gouraud(vertex_light, vertex_lights)
                      : plain::face_loop_gouraud(vertex_light);
}

void face_loop_zlight() {
    draws_list_fast() ? fast::face_loop_zlight() : plain::face_loop_zlight();
}
