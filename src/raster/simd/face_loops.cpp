// SPDX-License-Identifier: MIT
// The fast face loops: a batch of triangles passes through all stages before the next one is collected.
//
//     polygon list       collect_triangles    up to 16 triangles checked and culled per vector
//        |                                    cull_triangles-inl.h; other polygons: polygon_walk.cpp
//        v
//     TriangleBatch      light, complete      light or colours, map coordinates, by mode
//        |                                    batch_attributes-inl.h, batch_lighting.cpp
//        |               set_up_triangles     lane = triangle: sort, slopes, gradients
//        v                                    triangle_setup-inl.h
//     BatchEdges                              edge in row i = start + i * step, modulo 2^32
//        |               RowLister            a tall triangle's rows fill their own vectors, short ones
//        v                                    share some: place = row * 16 + lane, row_list-inl.h
//     rows               append_spans         lane = row: left x, right x, clip, drop empty rows;
//        |               complete_spans        first pixel's depth, colour and map coordinates
//        v                                    row_spans-inl.h
//     SpanList           draw_spans           how many pixels are drawn together, span_drawing-inl.h
//        |               WindowColours,       mapped modes: texels from windows of the map, or one by one
//        |                 fetch_texels       texel_windows-inl.h, texels-inl.h
//        |               write_nearer         lane = pixel: depth test, masked store
//        v                                    pixel_vectors-inl.h
//     chunkybuf1, zbuf
//
// A frame that is larger than the caches takes a detour before its triangles are set up. Its rows are divided
// into bands, which are drawn one after another, each with a small buffer of depths that stays in the cache:
//
//     TriangleBatch      store_batch          points, colour, first and last row of each triangle
//        |                                    triangle_store-inl.h
//        v
//     TriangleStore      draw_stored          for each band: the triangles in it, in list order
//        |               load_corners         triangle_store-inl.h
//        v
//     TriangleBatch      set_up_triangles and so on, for the band's rows alone (bands.h)
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
//     draw_span, its loop                  pixel_vectors        depths compared as 32-bit integers, or as 16-
//                                                               bit ones if all of a list fit; list order
//     draw_rows                            bands                an edge in any row is one product, so that it
//                                                               does not matter in which row a band begins
//
// In neither form may the compiler fuse a product with a sum (-ffp-contract=off).
#include "raster/face_loops.h"

#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "object/model.h"
#include "raster/simd/bands.h"
#include "raster/simd/batch_edges.h"
#include "raster/simd/batch_lighting.h"
#include "raster/simd/polygon_walk.h"
#include "raster/simd/triangle_batch.h"
#include "raster/simd/triangle_store.h"
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
#include "raster/simd/triangle_store-inl.h"

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

/// Draws batches of one filler, in order.
template <Filler filler>
class BatchDrawer {
public:
    /// Not inlined, so that it is compiled once for both ways through the polygon list.
    HWY_NOINLINE void draw(const TriangleBatch &batch, const DrawTarget &target) {
        const std::size_t lanes = hn::Lanes(FloatLanes());
        for (std::size_t group = 0; group < batch.count; group += lanes) {
            set_up_triangles<quantities_of(filler)>(batch, group, target.rows, edges_);
        }
        spans_.target = target;
        for (std::size_t group = 0; group < batch.count; group += lanes) {
            draw_group<filler>(batch, edges_, group, rows_, spans_);
        }
        spans_.draw();
    }

private:
    BatchEdges edges_;
    RowList rows_{};
    SpanDrawer<filler> spans_;
};

/// Collects triangles until the store is full or the polygon list is at its end.
template <typename Light>
HWY_INLINE void fill_store(PolygonWalk &walk, TriangleBatch &batch, Light light) {
    triangle_store.count = 0;
    while (triangle_store.count < TriangleStore::capacity && collect_triangles(walk, batch)) {
        number_corners(batch);
        light(batch);
        store_batch(batch, triangle_store);
        triangles_drawn += static_cast<std::int32_t>(batch.count);
    }
}

/// Draws a large frame. Most objects fit the store. The next part of one that does not goes on with the
/// depths that the parts before it have left.
template <Filler filler, typename Light, typename Complete>
HWY_INLINE void draw_in_bands(PolygonWalk &walk, TriangleBatch &batch, BatchDrawer<filler> &drawer,
                              Light light, Complete complete) {
    TriangleBatch in_band{};
    const std::int32_t last_row = whole_frame().rows.last;
    bool is_first_part = true;
    bool is_last_part = false;
    while (!is_last_part) {
        fill_store(walk, batch, light);
        is_last_part = triangle_store.count < TriangleStore::capacity;
        for (std::int32_t row = first_drawn_row; row <= last_row;) {
            const DrawTarget band = band_from(row);
            if (is_first_part) {
                clear_depths(band);
            } else {
                load_depths(band);
            }
            draw_stored(triangle_store, band.rows, in_band, [&]() HWY_ATTR {
                load_corners(in_band);
                complete(in_band);
                drawer.draw(in_band, band);
            });
            if (keeps_depths || !is_last_part) {
                keep_depths(band);
            }
            row = band.rows.last + 1;
        }
        is_first_part = false;
    }
}

/// The face loop. `light` gives each batch of triangles the colours that it needs. `complete` reads what the
/// filler needs of the corners besides their places on the screen.
template <Filler filler, typename Light, typename Complete>
HWY_INLINE void draw_polygons(bool keeps_lit_corners, Light light, Complete complete) {
    constexpr bool uses_points = filler == Filler::mapped || filler == Filler::gouraud;
    // Unused lanes are computed and discarded. They hold zeros or left-overs of earlier batches, whose point
    // indices were already checked, so that gathers through them stay in bounds.
    TriangleBatch batch{};
    BatchDrawer<filler> drawer;
    batch.keeps_lit_corners = keeps_lit_corners;
    PolygonWalk walk = start_polygon_walk();
    triangles_drawn = 0;
    if (draws_in_bands()) {
        draw_in_bands(walk, batch, drawer, light, complete);
    } else {
        const DrawTarget frame = whole_frame();
        while (collect_triangles(walk, batch)) {
            if constexpr (uses_points) {
                number_corners(batch);
            }
            light(batch);
            complete(batch);
            drawer.draw(batch, frame);
            triangles_drawn += static_cast<std::int32_t>(batch.count);
        }
    }
    faces_seen = walk.polygons;
}

/// For fillers that need no colours, or nothing else of the corners.
constexpr auto nothing = [](TriangleBatch &) HWY_ATTR {};

HWY_INLINE void draw_mapped(const Vec3 *records) {
    draw_polygons<Filler::mapped>(
        false, nothing, [records](TriangleBatch &batch) HWY_ATTR { copy_map_coordinates(batch, records); });
}

void face_loop_envmap() {
    draw_mapped(lwonormals3.get());
}

void face_loop_texturemap(FaceLights) {
    // A light has no effect but its result, which this mode drops.
    draw_mapped(lwopoints2.get());
}

void face_loop_lightsourced(FaceLights face_lights) {
    draw_polygons<Filler::flat>(
        true,
        [face_lights](TriangleBatch &batch) HWY_ATTR {
            light_faces(batch, face_lights);
            make_colour_bytes(batch);
        },
        nothing);
}

void face_loop_gouraud(VertexLights vertex_lights) {
    draw_polygons<Filler::gouraud>(
        false, [vertex_lights](TriangleBatch &batch) HWY_ATTR { light_points(batch, vertex_lights); },
        [](TriangleBatch &batch) HWY_ATTR { gather_colours(batch); });
}

void face_loop_zlight() {
    draw_polygons<Filler::zcolour>(false, nothing, nothing);
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
