// SPDX-License-Identifier: MIT
// All modes share the walk, the back-face test and the fan of triangles; they differ in the filler and in the
// slots that they fill.
#include "raster/face_loops.h"

#include "core/forms.h"
#include "main_68k/viewer_state.h"
#include "object/model.h"
#include "object/polygon_list.h"
#include "raster/triangle_fillers.h"

#include <array>

namespace {

/// The three points of one triangle of a fan, as indices.
using Corners = std::array<std::uint16_t, 3>;

/// Whether `flip` makes the loops skip the triangle (p1, p2, p3) on the screen. A degenerate triangle counts
/// as one that is no front face.
bool faces_away(const Vec3 &p1, const Vec3 &p2, const Vec3 &p3) {
    return is_front_face(p1, p2, p3) ? viewer.flip == 1 : viewer.flip == 0;
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

/// Walks all polygons. For each visible one, `begin_polygon` is called once, when the block holds the first
/// triangle, and `fill` for each triangle of the fan.
template <typename BeginPolygon, typename Fill>
void draw_polygons(TriangleParams &block, BeginPolygon begin_polygon, Fill fill) {
    faces_seen = 0;
    triangles_drawn = 0;
    std::int32_t drawn_before = 0;
    const std::int32_t identical = for_each_polygon([&](const Polygon &polygon) {
        const auto &points = polygon.indices;
        ++faces_seen;
        drawn_before = triangles_drawn;
        if (!polygon.has_valid_indices) {
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
    // The remaining polygons are identical to the last one and would draw the same pixels; only count them.
    faces_seen += identical;
    triangles_drawn += identical * (triangles_drawn - drawn_before);
}

/// The colour of a polygon by the three corners in the block.
float light_of_block(FaceLights face_lights, const TriangleParams &block) {
    const FaceCorners corners{{&block[0], &block[3], &block[6]},
                              {&block[1], &block[4], &block[7]},
                              {&block[2], &block[5], &block[8]}};
    float colour = 0.0F;
    face_lights(corners, 1, &colour);
    return colour;
}

/// For the loops that have nothing to do once per polygon.
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

void face_loop_texturemap(FaceLights face_lights) {
    TriangleParams block{};
    draw_polygons(
        block, [&block, face_lights] { block[9] = light_of_block(face_lights, block); },
        [&block](const Corners &corners) {
            place_map_coordinates(block, corners, lwopoints2);
            fill_tri_mapped(&block);
        });
}

void face_loop_lightsourced(FaceLights face_lights) {
    TriangleParams block{};
    draw_polygons(
        block, [&block, face_lights] { block[9] = light_of_block(face_lights, block); },
        [&block](const Corners &) { fill_tri_flat(&block); });
}

void face_loop_gouraud(VertexLights vertex_lights) {
    TriangleParams block{};
    draw_polygons(block, nothing, [&block, vertex_lights](const Corners &corners) {
        std::size_t slot = 9;
        for (const std::uint16_t corner : corners) {
            if (lwofis[corner] == not_yet_lit) {
                const std::uint32_t point = corner;
                vertex_lights(&point, 1);
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

/// If the chunk claims more words than the file held, the plain loops draw: only they stop at the unread
/// tail.
bool draws_list_fast() {
    return draws_fast && unread_polygon_words == 0;
}

} // namespace

bool face_loops_clear_depths() {
    return draws_list_fast() && fast::draws_in_bands();
}

void face_loop_envmap() {
    if (draws_list_fast()) {
        fast::face_loop_envmap();
    } else {
        plain::face_loop_envmap();
    }
}

void face_loop_texturemap(FaceLights face_lights) {
    if (draws_list_fast()) {
        fast::face_loop_texturemap(face_lights);
    } else {
        plain::face_loop_texturemap(face_lights);
    }
}

void face_loop_lightsourced(FaceLights face_lights) {
    if (draws_list_fast()) {
        fast::face_loop_lightsourced(face_lights);
    } else {
        plain::face_loop_lightsourced(face_lights);
    }
}

void face_loop_gouraud(VertexLights vertex_lights) {
    if (draws_list_fast()) {
        fast::face_loop_gouraud(vertex_lights);
    } else {
        plain::face_loop_gouraud(vertex_lights);
    }
}

void face_loop_zlight() {
    if (draws_list_fast()) {
        fast::face_loop_zlight();
    } else {
        plain::face_loop_zlight();
    }
}
