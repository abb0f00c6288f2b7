// SPDX-License-Identifier: MIT
// The fast face loops: a batch of triangles goes through all stages before the next one is taken.
#include "raster/face_loops.h"

#include "object/model.h"
#include "raster/simd/triangle_batch.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "raster/simd/face_loops.cpp"
#include "hwy/foreach_target.h"

#include "hwy/highway.h"

#include "raster/simd/conversions-inl.h"
#include "raster/simd/point_records-inl.h"
#include "raster/simd/row_spans-inl.h"
#include "raster/simd/span_drawing-inl.h"
#include "raster/simd/triangle_edges-inl.h"
#include "raster/simd/visible_triangles-inl.h"

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

#if HWY_TARGET >= HWY_EMU128

// A processor without any vectors draws by the plain forms.
using plain::face_loop_envmap;
using plain::face_loop_gouraud;
using plain::face_loop_lightsourced;
using plain::face_loop_texturemap;
using plain::face_loop_zlight;

#else

/// The spans that wait to be drawn, and what drawing them needs.
template <Filler filler>
struct SpanDrawer {
    SpanList spans;
    TexelBuffer texels;

    HWY_INLINE void draw() { draw_spans<filler>(spans, texels); }

    /// Whether there is no room for a vector of spans.
    HWY_INLINE bool is_full() const { return spans.count + vector_lanes > SpanList::capacity; }
};

/// The places of the rows of a group of triangles. A group of few rows is listed before any of it is drawn.
struct RowList {
    static constexpr std::size_t capacity = 256;
    alignas(vector_bytes) std::array<std::uint16_t, capacity + vector_lanes> place;
};

/// Lists the rows of one vector of triangles of a batch and turns them into spans.
template <Filler filler>
class RowLister {
public:
    HWY_INLINE RowLister(const TriangleBatch &batch, const BatchEdges &edges, std::size_t group,
                         RowList &list, SpanDrawer<filler> &drawer)
        : batch_(batch), edges_(edges), group_(group), list_(list), drawer_(drawer),
          first_span_(drawer.spans.count) {}

    /// A triangle of few rows waits in the list, so that one vector takes the rows of several; one of many
    /// rows fills vectors of its own.
    HWY_INLINE void add(std::size_t triangle) {
        const WordLanes words;
        const ListLanes listed;
        const std::size_t lanes = hn::Lanes(words);
        const auto rows = static_cast<std::size_t>(edges_.rows[group_ + triangle]);
        if (rows <= lanes) {
            hn::StoreU(row_places(listed, triangle, 0), listed, &list_.place[count_]);
            count_ += rows;
            if (count_ + lanes > RowList::capacity) {
                empty_list();
            }
            return;
        }
        empty_list();
        for (std::size_t row = 0; row < rows; row += lanes) {
            append(row_places(words, triangle, row), rows - row);
        }
    }

    /// Turns the rows that are left into spans.
    HWY_INLINE void finish() {
        empty_list();
        complete();
    }

private:
    using ListLanes = hn::Rebind<std::uint16_t, WordLanes>;

    HWY_INLINE void empty_list() {
        const WordLanes words;
        for (std::size_t at = 0; at < count_; at += hn::Lanes(words)) {
            append(hn::PromoteTo(words, hn::Load(ListLanes(), &list_.place[at])), count_ - at);
        }
        count_ = 0;
    }

    HWY_INLINE void append(Words place, std::size_t count) {
        if (drawer_.is_full()) {
            complete();
            drawer_.draw();
            first_span_ = 0;
        }
        append_spans(edges_, group_, place, count, drawer_.spans);
    }

    HWY_INLINE void complete() {
        complete_spans<quantities_of(filler), filler == Filler::flat>(batch_, edges_, group_, first_span_,
                                                                      drawer_.spans);
    }

    const TriangleBatch &batch_;
    const BatchEdges &edges_;
    const std::size_t group_;
    RowList &list_;
    SpanDrawer<filler> &drawer_;
    /// The first span of this group in the drawer's list.
    std::size_t first_span_;
    /// Rows in the list.
    std::size_t count_ = 0;
};

/// Draws a vector of triangles of the batch, in order.
template <Filler filler>
HWY_INLINE void draw_group(const TriangleBatch &batch, const BatchEdges &edges, std::size_t group,
                           RowList &list, SpanDrawer<filler> &drawer) {
    RowLister<filler> lister(batch, edges, group, list, drawer);
    const std::size_t triangles = std::min(hn::Lanes(IntLanes()), batch.count - group);
    for (std::size_t triangle = 0; triangle < triangles; ++triangle) {
        lister.add(triangle);
    }
    lister.finish();
}

/// Copies x and y of each corner's record into the map coordinates.
HWY_INLINE void copy_map_coordinates(TriangleBatch &batch, const Vec3 *records) {
    const FloatLanes floats;
    for (std::size_t at = 0; at < batch.count; at += hn::Lanes(floats)) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const std::uint32_t *points = &batch.point[corner][at];
            const Points p = load_points(records, [points](std::size_t lane) { return points[lane]; });
            hn::Store(p.x, floats, &batch.quantity[1][corner][at]);
            hn::Store(p.y, floats, &batch.quantity[2][corner][at]);
        }
    }
}

/// Looks up each corner's colour in `lwofis`.
HWY_INLINE void gather_colours(TriangleBatch &batch) {
    const FloatLanes floats;
    const IntLanes ints;
    for (std::size_t at = 0; at < batch.count; at += hn::Lanes(floats)) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const auto points = hn::BitCast(ints, hn::Load(WordLanes(), &batch.point[corner][at]));
            hn::Store(hn::GatherIndex(floats, lwofis.get(), points), floats, &batch.quantity[1][corner][at]);
        }
    }
}

/// Truncates the lights of flat triangles to bytes.
HWY_INLINE void make_colour_bytes(TriangleBatch &batch) {
    const WordLanes words;
    for (std::size_t at = 0; at < batch.count; at += hn::Lanes(words)) {
        const Words colour = as_fixed(to_int(hn::Load(FloatLanes(), &batch.light[at])));
        hn::Store(hn::And(colour, hn::Set(words, 0xFF)), words, &batch.colour[at]);
    }
}

/// The face loop: `complete` gives each batch what its filler interpolates besides the depth.
template <Filler filler, typename Complete>
HWY_INLINE void draw_polygons(bool keeps_lit_corners, Complete complete) {
    // Lanes without a triangle or row are computed like the others and dropped. They start as zeros, and
    // later hold what earlier triangles or the packing of a vector left there, whose points were all checked
    // before: the indices among them are valid always.
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
