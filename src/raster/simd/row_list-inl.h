// SPDX-License-Identifier: MIT
// The rows of a vector of triangles, listed in drawing order and made into spans.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_ROW_LIST_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_ROW_LIST_INL_H
#undef ZELVO_RASTER_SIMD_ROW_LIST_INL_H
#else
#define ZELVO_RASTER_SIMD_ROW_LIST_INL_H
#endif

#include "hwy/highway.h"

#include "raster/simd/bands.h"
#include "raster/simd/batch_edges.h"
#include "raster/simd/conversions-inl.h"
#include "raster/simd/row_spans-inl.h"
#include "raster/simd/span_drawing-inl.h"
#include "raster/simd/span_list.h"
#include "raster/simd/triangle_batch.h"
#include "raster/simd/vector_size.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// The spans that wait to be drawn, where they are drawn, and the buffers that drawing them needs.
template <Filler filler>
struct SpanDrawer {
    SpanList spans;
    DrawTarget target;
    TexelBuffers texels;

    HWY_INLINE void draw() { draw_spans<filler>(spans, texels, target); }

    /// Whether there is no room for a vector of spans.
    HWY_INLINE bool is_full() const { return spans.count + vector_lanes > SpanList::capacity; }
};

/// The places of the rows of a group's short triangles.
struct RowList {
    /// Only triangles of at most `vector_lanes` rows are listed, and a group has at most a vector of
    /// triangles.
    static constexpr std::size_t capacity = vector_lanes * vector_lanes;
    alignas(vector_bytes) std::array<std::uint16_t, capacity + vector_lanes> place;
};

/// Turns the rows of one group of triangles into spans.
template <Filler filler>
class RowLister {
public:
    HWY_INLINE RowLister(const TriangleBatch &batch, const BatchEdges &edges, std::size_t group,
                         RowList &list, SpanDrawer<filler> &drawer)
        : batch_(batch), edges_(edges), group_(group), list_(list), drawer_(drawer),
          first_span_(drawer.spans.count) {}

    /// Adds the rows of the triangle in this lane of the group. A triangle of few rows waits in the list, so
    /// that one vector holds the rows of several.
    HWY_INLINE void add(std::size_t triangle) {
        const ListLanes listed;
        const std::size_t rows = rows_of(triangle);
        if (rows <= hn::Lanes(listed)) {
            hn::StoreU(row_places(listed, triangle), listed, &list_.place[count_]);
            count_ += rows;
        } else {
            finish();
            add_alone(triangle);
            first_span_ = drawer_.spans.count;
        }
    }

    /// Adds the rows of a triangle whose rows fill their own vectors. No row may be in the list.
    HWY_INLINE void add_alone(std::size_t triangle) {
        const std::size_t rows = rows_of(triangle);
        for (std::size_t row = 0; row < rows; row += hn::Lanes(WordLanes())) {
            if (drawer_.is_full()) {
                drawer_.draw();
            }
            append_spans<filler>(batch_, edges_, group_ + triangle, row, rows - row, drawer_.spans);
        }
    }

    /// Turns the rows in the list into spans.
    HWY_INLINE void finish() {
        using RowLanes = hn::Rebind<std::uint16_t, WordLanes>;
        const WordLanes words;
        for (std::size_t at = 0; at < count_; at += hn::Lanes(words)) {
            if (drawer_.is_full()) {
                complete();
                drawer_.draw();
                first_span_ = 0;
            }
            const Words place = hn::PromoteTo(words, hn::Load(RowLanes(), &list_.place[at]));
            append_incomplete_spans(edges_, group_, place, count_ - at, drawer_.spans);
        }
        count_ = 0;
        complete();
    }

private:
    /// The places that are listed at once: twice as many as a vector of rows has lanes, if that has less than
    /// the most. Most triangles of a fine mesh have fewer rows, so that the branch is predicted.
    using ListLanes = hn::CappedTag<std::uint16_t, vector_lanes>;

    std::size_t rows_of(std::size_t triangle) const {
        return static_cast<std::size_t>(edges_.rows[group_ + triangle]);
    }

    HWY_INLINE void complete() { complete_spans<filler>(batch_, edges_, group_, first_span_, drawer_.spans); }

    const TriangleBatch &batch_;
    const BatchEdges &edges_;
    const std::size_t group_;
    RowList &list_;
    SpanDrawer<filler> &drawer_;
    /// The first of this group's spans that are not complete.
    std::size_t first_span_;
    /// Rows in the list.
    std::size_t count_ = 0;
};

/// Whether the triangles of a group have so many rows on average that each one's rows fill their own vectors.
/// Vectors that triangles share have fewer empty lanes, but the values of each lane's triangle are looked up.
HWY_INLINE bool has_tall_triangles(const BatchEdges &edges, std::size_t group) {
    const IntLanes ints;
    constexpr auto lanes = static_cast<std::int32_t>(hn::MaxLanes(IntLanes()));
    // With 4 and with 8 lanes other limits took up to 3 percent longer (docs/speed.md, "Tried without gain").
    // A lookup costs less in a vector of 4 lanes, and in one of 16 it serves more rows.
    constexpr std::int32_t tall = lanes == 8 ? 3 : 8;
    return hn::GetLane(hn::SumOfLanes(ints, hn::Load(ints, &edges.rows[group]))) >= lanes * tall;
}

/// Draws a vector of triangles of the batch, in order. The branch is taken once per group, because that of a
/// single triangle is hard to predict.
template <Filler filler>
HWY_INLINE void draw_group(const TriangleBatch &batch, const BatchEdges &edges, std::size_t group,
                           RowList &list, SpanDrawer<filler> &drawer) {
    RowLister<filler> lister(batch, edges, group, list, drawer);
    const std::size_t triangles = std::min(hn::Lanes(IntLanes()), batch.count - group);
    if (has_tall_triangles(edges, group)) {
        for (std::size_t triangle = 0; triangle < triangles; ++triangle) {
            lister.add_alone(triangle);
        }
    } else {
        for (std::size_t triangle = 0; triangle < triangles; ++triangle) {
            lister.add(triangle);
        }
        lister.finish();
    }
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
