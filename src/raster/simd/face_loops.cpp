// SPDX-License-Identifier: MIT
// The fast face loops: a batch of triangles passes through all stages before the next one is collected.
//
//     polygon list       collect_triangles    up to 16 triangles checked and culled per vector
//        |                                    cull_triangles-inl.h; other polygons: polygon_walk.cpp
//        v
//     TriangleBatch      complete(batch)      map coordinates, light or colours, by mode
//        |                                    batch_attributes-inl.h, batch_lighting.cpp
//        |               set_up_triangles     lane = triangle: sort, slopes, gradients
//        v                                    triangle_setup-inl.h
//     BatchEdges                              edge in row i = start + i * step, modulo 2^32
//        |               RowLister            place = row * 16 + lane of its triangle
//        v                                    row_list-inl.h
//     rows (places)      append_spans         lane = row: left x, right x, clip, drop empty rows
//        |               complete_spans       first pixel's depth, colour and map coordinates
//        v                                    row_spans-inl.h
//     SpanList           draw_spans           lane = pixel: depth test, masked store
//        |                                    span_drawing-inl.h
//        v
//     chunkybuf1, zbuf
//
// Each stage does the operations of a plain function, in the same order for each triangle, row and pixel:
//
//     plain                                fast                 same bits because
//     faces_away, fan                      cull_triangles       same products and comparison, list order kept
//     place_map_coordinates, the lights    batch_attributes     copies; a light does not depend on the count
//     sort_vertices, edge_slopes,          triangle_setup       same differences and divisions; to_fixed of a
//       gradients, start_left, _right                           float is exact in float
//     Edges::advance, draw_rows            row_spans            n wrapping sums are one wrapping product
//     draw_span, before its loop           row_spans            same products, to_int has the same rules
//     draw_span, its loop                  span_drawing         depths compared as 32-bit integers, spans
//                                                               drawn in list order
//
// In neither form may the compiler fuse a product with a sum (-ffp-contract=off).
#include "raster/face_loops.h"

#include "main_68k/viewer_state.h"
#include "object/model.h"
#include "raster/simd/batch_edges.h"
#include "raster/simd/batch_lighting.h"
#include "raster/simd/polygon_walk.h"
#include "raster/simd/triangle_batch.h"
#include "raster/simd/vector_size.h"

#include <cstddef>
#include <cstdint>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "raster/simd/face_loops.cpp"
#include "hwy/foreach_target.h"

#include "hwy/highway.h"

#include "raster/simd/batch_attributes-inl.h"
#include "raster/simd/conversions-inl.h"
#include "raster/simd/cull_triangles-inl.h"
#include "raster/simd/row_list-inl.h"
#include "raster/simd/triangle_setup-inl.h"

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

#if HWY_TARGET >= HWY_EMU128

// A processor without vectors draws by the plain forms.
using plain::face_loop_envmap;
using plain::face_loop_gouraud;
using plain::face_loop_lightsourced;
using plain::face_loop_texturemap;
using plain::face_loop_zlight;

#else

/// The face loop: `complete` gives each batch what its filler needs besides the corners on the screen.
template <Filler filler, typename Complete>
HWY_INLINE void draw_polygons(bool keeps_lit_corners, Complete complete) {
    // Unused lanes are computed and discarded. They hold zeros or left-overs of earlier batches, whose point
    // indices were already checked, so that gathers through them stay in bounds.
    TriangleBatch batch{};
    BatchEdges edges;
    RowList rows{};
    SpanDrawer<filler> drawer;
    batch.keeps_lit_corners = keeps_lit_corners;
    const std::size_t lanes = hn::Lanes(FloatLanes());
    PolygonWalk walk = start_polygon_walk();
    triangles_drawn = 0;
    while (collect_triangles(walk, batch)) {
        complete(batch);
        for (std::size_t group = 0; group < batch.count; group += lanes) {
            set_up_triangles<quantities_of(filler)>(batch, group, edges);
        }
        for (std::size_t group = 0; group < batch.count; group += lanes) {
            draw_group<filler>(batch, edges, group, rows, drawer);
        }
        drawer.draw();
        triangles_drawn += static_cast<std::int32_t>(batch.count);
    }
    faces_seen = walk.polygons;
}

HWY_INLINE void draw_mapped(const Vec3 *records) {
    draw_polygons<Filler::mapped>(false, [records](TriangleBatch &batch) HWY_ATTR {
        number_corners(batch);
        copy_map_coordinates(batch, records);
    });
}

void face_loop_envmap() {
    draw_mapped(lwonormals3.get());
}

void face_loop_texturemap(FaceLights) {
    // A light has no effect but its result, which this mode drops.
    draw_mapped(lwopoints2.get());
}

void face_loop_lightsourced(FaceLights face_lights) {
    draw_polygons<Filler::flat>(true, [face_lights](TriangleBatch &batch) HWY_ATTR {
        light_faces(batch, face_lights);
        make_colour_bytes(batch);
    });
}

void face_loop_gouraud(VertexLights vertex_lights) {
    draw_polygons<Filler::gouraud>(false, [vertex_lights](TriangleBatch &batch) HWY_ATTR {
        number_corners(batch);
        light_points(batch, vertex_lights);
        gather_colours(batch);
    });
}

void face_loop_zlight() {
    draw_polygons<Filler::zcolour>(false, [](TriangleBatch &) HWY_ATTR {});
}

#endif

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace fast {

HWY_EXPORT(face_loop_envmap);
HWY_EXPORT(face_loop_texturemap);
HWY_EXPORT(face_loop_lightsourced);
HWY_EXPORT(face_loop_gouraud);
HWY_EXPORT(face_loop_zlight);

void face_loop_envmap() {
    if (frame_width < least_width) {
        plain::face_loop_envmap();
    } else {
        HWY_DYNAMIC_DISPATCH(face_loop_envmap)();
    }
}

void face_loop_texturemap(FaceLights face_lights) {
    if (frame_width < least_width) {
        plain::face_loop_texturemap(face_lights);
    } else {
        HWY_DYNAMIC_DISPATCH(face_loop_texturemap)(face_lights);
    }
}

void face_loop_lightsourced(FaceLights face_lights) {
    if (frame_width < least_width) {
        plain::face_loop_lightsourced(face_lights);
    } else {
        HWY_DYNAMIC_DISPATCH(face_loop_lightsourced)(face_lights);
    }
}

void face_loop_gouraud(VertexLights vertex_lights) {
    if (frame_width < least_width) {
        plain::face_loop_gouraud(vertex_lights);
    } else {
        HWY_DYNAMIC_DISPATCH(face_loop_gouraud)(vertex_lights);
    }
}

void face_loop_zlight() {
    if (frame_width < least_width) {
        plain::face_loop_zlight();
    } else {
        HWY_DYNAMIC_DISPATCH(face_loop_zlight)();
    }
}

} // namespace fast

#endif
