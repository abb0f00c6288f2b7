// SPDX-License-Identifier: MIT
// Triangle setup of a vector of triangles at once: sort, slopes, gradients, and where the edges stand in the
// first rows that are drawn. Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_TRIANGLE_EDGES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_TRIANGLE_EDGES_INL_H
#undef ZELVO_RASTER_SIMD_TRIANGLE_EDGES_INL_H
#else
#define ZELVO_RASTER_SIMD_TRIANGLE_EDGES_INL_H
#endif

#include "display/frame_buffers.h"
#include "raster/simd/conversions-inl.h"
#include "raster/simd/triangle_batch.h"

#include <array>
#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// The vertices of a vector of triangles, top to bottom once they are sorted.
template <std::size_t Count>
struct Vertices {
    std::array<Floats, 3> x;
    std::array<Floats, 3> y;
    std::array<std::array<Floats, 3>, Count> quantity;
};

HWY_INLINE void swap_where(hn::Mask<FloatLanes> swapped, Floats &a, Floats &b) {
    const Floats old_a = a;
    a = hn::IfThenElse(swapped, b, a);
    b = hn::IfThenElse(swapped, old_a, b);
}

/// Exchanges two neighbours in the lanes where the upper one lies lower; equal ones keep their order.
template <std::size_t Count>
HWY_INLINE void sort_pair(Vertices<Count> &v, std::size_t upper) {
    const auto swapped = hn::Gt(v.y[upper], v.y[upper + 1]);
    swap_where(swapped, v.x[upper], v.x[upper + 1]);
    swap_where(swapped, v.y[upper], v.y[upper + 1]);
    for (auto &quantity : v.quantity) {
        swap_where(swapped, quantity[upper], quantity[upper + 1]);
    }
}

template <std::size_t Count>
HWY_INLINE Vertices<Count> load_sorted_vertices(const TriangleBatch &batch, std::size_t at) {
    const FloatLanes floats;
    Vertices<Count> v;
    for (std::size_t corner = 0; corner < 3; ++corner) {
        v.x[corner] = hn::Load(floats, &batch.x[corner][at]);
        v.y[corner] = hn::Load(floats, &batch.y[corner][at]);
        for (std::size_t q = 0; q < Count; ++q) {
            v.quantity[q][corner] = hn::Load(floats, &batch.quantity[q][corner][at]);
        }
    }
    sort_pair(v, 0);
    sort_pair(v, 1);
    sort_pair(v, 0);
    return v;
}

/// Edges between two vertices, in floats per row.
template <std::size_t Count>
struct Slopes {
    Floats x;
    std::array<Floats, Count> quantity;
};

template <std::size_t Count>
HWY_INLINE Slopes<Count> edge_slopes(const Vertices<Count> &v, std::size_t from, std::size_t to) {
    const Floats rows = hn::Sub(v.y[to], v.y[from]);
    Slopes<Count> slopes;
    slopes.x = hn::Div(hn::Sub(v.x[to], v.x[from]), rows);
    for (std::size_t q = 0; q < Count; ++q) {
        slopes.quantity[q] = hn::Div(hn::Sub(v.quantity[q][to], v.quantity[q][from]), rows);
    }
    return slopes;
}

template <std::size_t Count>
HWY_INLINE Slopes<Count> choose(hn::Mask<FloatLanes> first, const Slopes<Count> &a, const Slopes<Count> &b) {
    Slopes<Count> chosen;
    chosen.x = hn::IfThenElse(first, a.x, b.x);
    for (std::size_t q = 0; q < Count; ++q) {
        chosen.quantity[q] = hn::IfThenElse(first, a.quantity[q], b.quantity[q]);
    }
    return chosen;
}

/// An accumulator in some row, and what a row down adds.
struct Walker {
    Words value;
    Words step;
};

/// A walker in the row of a vertex whose quantity is `at_vertex`, `above` rows below the row's own y.
HWY_INLINE Walker start_walker(Floats at_vertex, Floats above, Floats slope) {
    return {to_fixed(hn::Sub(at_vertex, hn::Mul(above, slope))), to_fixed(slope)};
}

/// Both edges in some row; quantities run along the left one.
template <std::size_t Count>
struct EdgeWalkers {
    Walker left_x;
    Walker right_x;
    std::array<Walker, Count> left;
};

HWY_INLINE Walker choose(hn::Mask<WordLanes> first, const Walker &a, const Walker &b) {
    return {hn::IfThenElse(first, a.value, b.value), hn::IfThenElse(first, a.step, b.step)};
}

/// Stores a walker that has `rows` rows to go, forward or back, to row 0 of the triangle's drawn rows;
/// wrapping, so that any number of rows is one product.
HWY_INLINE void store_walker(const Walker &walker, Words rows, EdgeWalk &walk, std::size_t at) {
    const WordLanes words;
    hn::Store(hn::Add(walker.value, hn::Mul(rows, walker.step)), words, &walk.start[at]);
    hn::Store(walker.step, words, &walk.step[at]);
}

template <std::size_t Count>
HWY_INLINE void store_walkers(const EdgeWalkers<Count> &walkers, Words rows, EdgePair &pair, std::size_t at) {
    store_walker(walkers.left_x, rows, pair.left_x, at);
    store_walker(walkers.right_x, rows, pair.right_x, at);
    for (std::size_t q = 0; q < Count; ++q) {
        store_walker(walkers.left[q], rows, pair.left[q], at);
    }
}

/// The drawn part of rows `first` to `last`: the first row and how many there are.
struct DrawnRows {
    Ints first;
    Ints count;
};

HWY_INLINE DrawnRows clip_rows(Ints first, Ints last) {
    const IntLanes ints;
    const auto first_row = hn::Max(first, hn::Set(ints, first_drawn_row));
    const auto last_row = hn::Min(last, hn::Set(ints, frame_height - first_drawn_row));
    // A row number may be the largest integer, so the bounds are compared before they are subtracted.
    const auto is_empty = hn::Gt(first_row, last_row);
    const auto count = hn::Add(hn::Sub(last_row, first_row), hn::Set(ints, 1));
    return {first_row, hn::IfThenZeroElse(is_empty, count)};
}

/// Sets up the vector of triangles at `at` of the batch.
template <std::size_t Count>
HWY_INLINE void set_up_triangles(const TriangleBatch &batch, std::size_t at, BatchEdges &edges) {
    constexpr std::size_t top = 0;
    constexpr std::size_t middle = 1;
    constexpr std::size_t bottom = 2;
    const FloatLanes floats;
    const IntLanes ints;
    const WordLanes words;

    const auto v = load_sorted_vertices<Count>(batch, at);
    const Ints top_row = to_int(v.y[top]);
    const Ints middle_row = to_int(v.y[middle]);
    const Ints bottom_row = to_int(v.y[bottom]);
    const auto flat_top = hn::Eq(v.y[top], v.y[middle]);
    const auto flat_bottom = hn::Eq(v.y[middle], v.y[bottom]);

    const auto short_edge = edge_slopes(v, top, middle);
    const auto long_edge = edge_slopes(v, top, bottom);
    const auto last_edge = edge_slopes(v, middle, bottom);
    const auto long_edge_left = hn::Gt(short_edge.x, long_edge.x);
    const auto left_edge = choose(long_edge_left, long_edge, short_edge);
    const auto right_edge = choose(long_edge_left, short_edge, long_edge);

    const auto run =
        hn::IfThenElse(flat_top, hn::Sub(v.x[middle], v.x[top]), hn::Sub(right_edge.x, left_edge.x));
    for (std::size_t q = 0; q < Count; ++q) {
        const auto rise = hn::IfThenElse(flat_top, hn::Sub(v.quantity[q][middle], v.quantity[q][top]),
                                         hn::Sub(right_edge.quantity[q], left_edge.quantity[q]));
        const auto per_pixel = hn::Div(rise, run);
        hn::Store(per_pixel, floats, &edges.per_pixel[q][at]);
        hn::Store(to_fixed(per_pixel), words, &edges.pixel_step[q][at]);
    }

    // Upper rows: both edges start at the top vertex.
    const Floats below_top_row = hn::Sub(v.y[top], hn::ConvertTo(floats, top_row));
    EdgeWalkers<Count> upper;
    upper.left_x = start_walker(v.x[top], below_top_row, left_edge.x);
    upper.right_x = start_walker(v.x[top], below_top_row, right_edge.x);
    for (std::size_t q = 0; q < Count; ++q) {
        upper.left[q] = start_walker(v.quantity[q][top], below_top_row, left_edge.quantity[q]);
    }
    DrawnRows upper_rows = clip_rows(top_row, middle_row);
    upper_rows.count = hn::IfThenZeroElse(hn::RebindMask(ints, flat_top), upper_rows.count);
    store_walkers(upper, as_fixed(hn::Sub(upper_rows.first, top_row)), edges.upper, at);

    // Lower rows: the long edge goes on from where it stands in the middle vertex's row, the short one is
    // replaced by an edge from that vertex.
    const Ints to_middle = hn::IfThenElseZero(hn::Gt(middle_row, top_row), hn::Sub(middle_row, top_row));
    const Floats below_middle_row = hn::Sub(v.y[middle], hn::ConvertTo(floats, middle_row));
    const auto is_long_left = hn::RebindMask(words, long_edge_left);
    const auto go_on = [to_middle](const Walker &walker) HWY_ATTR {
        return Walker{hn::Add(walker.value, hn::Mul(as_fixed(to_middle), walker.step)), walker.step};
    };
    const Walker new_x = start_walker(v.x[middle], below_middle_row, last_edge.x);
    EdgeWalkers<Count> lower;
    lower.left_x = choose(is_long_left, go_on(upper.left_x), new_x);
    lower.right_x = choose(is_long_left, new_x, go_on(upper.right_x));
    for (std::size_t q = 0; q < Count; ++q) {
        const Walker fresh = start_walker(v.quantity[q][middle], below_middle_row, last_edge.quantity[q]);
        lower.left[q] = choose(is_long_left, go_on(upper.left[q]), fresh);
    }
    // The row after the largest integer wraps to a small one, so that case is told apart.
    const auto is_last = hn::Eq(middle_row, hn::Set(ints, std::numeric_limits<std::int32_t>::max()));
    const auto is_empty = hn::Or(hn::RebindMask(ints, flat_bottom), is_last);
    DrawnRows lower_rows = clip_rows(as_signed(hn::Add(as_fixed(middle_row), hn::Set(words, 1))), bottom_row);
    lower_rows.count = hn::IfThenZeroElse(is_empty, lower_rows.count);

    // A triangle with rows on both sides of its middle vertex has them without a gap, so that one number
    // counts through them all.
    const Ints first_row =
        hn::IfThenElse(hn::Gt(upper_rows.count, hn::Zero(ints)), upper_rows.first, lower_rows.first);
    store_walkers(lower, as_fixed(hn::Sub(first_row, middle_row)), edges.lower, at);

    const auto is_triangle = hn::Lt(hn::Iota(ints, static_cast<std::int32_t>(at)),
                                    hn::Set(ints, static_cast<std::int32_t>(batch.count)));
    hn::Store(first_row, ints, &edges.first_row[at]);
    hn::Store(hn::IfThenElseZero(is_triangle, upper_rows.count), ints, &edges.upper_rows[at]);
    hn::Store(hn::IfThenElseZero(is_triangle, hn::Add(upper_rows.count, lower_rows.count)), ints,
              &edges.rows[at]);
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif
