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

/// Lists the rows of one group of triangles and turns them into spans.
template <Filler filler>
class RowLister {
public:
    HWY_INLINE RowLister(const TriangleBatch &batch, const BatchEdges &edges, std::size_t group,
                         RowList &list, SpanDrawer<filler> &drawer)
        : batch_(batch), edges_(edges), group_(group), list_(list), drawer_(drawer),
          first_span_(drawer.spans.count) {}

    /// Adds the rows of the triangle in this lane of the group. A triangle of few rows waits in the list, so
    /// that one vector holds the rows of several; one of many rows fills its own vectors.
    HWY_INLINE void add(std::size_t triangle) {
        const WordLanes words;
        const ListLanes listed;
        const std::size_t lanes = hn::Lanes(words);
        const auto rows = static_cast<std::size_t>(edges_.rows[group_ + triangle]);
        if (rows <= hn::Lanes(listed)) {
            hn::StoreU(row_places(listed, triangle, 0), listed, &list_.place[count_]);
            count_ += rows;
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
    /// The places that are listed at once: twice as many as a vector of rows has lanes, if that has less than
    /// the most. Most triangles of a fine mesh have fewer rows, so that the branch is predicted.
    using ListLanes = hn::CappedTag<std::uint16_t, vector_lanes>;

    HWY_INLINE void empty_list() {
        using RowLanes = hn::Rebind<std::uint16_t, WordLanes>;
        const WordLanes words;
        for (std::size_t at = 0; at < count_; at += hn::Lanes(words)) {
            append(hn::PromoteTo(words, hn::Load(RowLanes(), &list_.place[at])), count_ - at);
        }
        count_ = 0;
    }

    /// Appends the spans of a vector of rows, and draws the spans before them if there is no room.
    HWY_INLINE void append(Words place, std::size_t count) {
        if (drawer_.is_full()) {
            complete();
            drawer_.draw();
            first_span_ = 0;
        }
        append_spans(edges_, group_, place, count, drawer_.spans);
    }

    HWY_INLINE void complete() { complete_spans<filler>(batch_, edges_, group_, first_span_, drawer_.spans); }

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

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
