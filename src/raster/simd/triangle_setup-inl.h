// SPDX-License-Identifier: MIT
// Setup of a vector of triangles at once: sort, slopes, gradients, and the edges in the first drawn row.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_TRIANGLE_SETUP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_TRIANGLE_SETUP_INL_H
#undef ZELVO_RASTER_SIMD_TRIANGLE_SETUP_INL_H
#else
#define ZELVO_RASTER_SIMD_TRIANGLE_SETUP_INL_H
#endif

#include "hwy/highway.h"

#include "raster/simd/bands.h"
#include "raster/simd/batch_edges.h"
#include "raster/simd/conversions-inl.h"
#include "raster/simd/triangle_batch.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// The vertices once they are sorted.
constexpr std::size_t top = 0;
constexpr std::size_t middle = 1;
constexpr std::size_t bottom = 2;

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

/// Exchanges two neighbours in the lanes where the first has the larger y; equal ones keep their order.
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
struct EdgeSlopes {
    Floats x;
    std::array<Floats, Count> quantities;
};

template <std::size_t Count>
HWY_INLINE EdgeSlopes<Count> edge_slopes(const Vertices<Count> &v, std::size_t from, std::size_t to) {
    const Floats rows = hn::Sub(v.y[to], v.y[from]);
    EdgeSlopes<Count> slopes;
    slopes.x = hn::Div(hn::Sub(v.x[to], v.x[from]), rows);
    for (std::size_t q = 0; q < Count; ++q) {
        slopes.quantities[q] = hn::Div(hn::Sub(v.quantity[q][to], v.quantity[q][from]), rows);
    }
    return slopes;
}

template <std::size_t Count>
HWY_INLINE EdgeSlopes<Count> choose(hn::Mask<FloatLanes> first, const EdgeSlopes<Count> &a,
                                    const EdgeSlopes<Count> &b) {
    EdgeSlopes<Count> chosen;
    chosen.x = hn::IfThenElse(first, a.x, b.x);
    for (std::size_t q = 0; q < Count; ++q) {
        chosen.quantities[q] = hn::IfThenElse(first, a.quantities[q], b.quantities[q]);
    }
    return chosen;
}

/// A 16.16 accumulator in some row, and what one row down adds.
struct Accumulator {
    Words value;
    Words step;
};

/// An accumulator in the row of a vertex, whose value there is `at_vertex`; backed up by `below_row` rows,
/// from the vertex to the row's own y.
HWY_INLINE Accumulator start_accumulator(Floats at_vertex, Floats below_row, Floats slope) {
    return {to_fixed(hn::Sub(at_vertex, hn::Mul(below_row, slope))), to_fixed(slope)};
}

/// The accumulator `rows` rows further down, wrapping: the sum of that many steps is one product.
HWY_INLINE Accumulator advanced(const Accumulator &accumulator, Words rows) {
    return {hn::Add(accumulator.value, hn::Mul(rows, accumulator.step)), accumulator.step};
}

HWY_INLINE Accumulator choose(hn::Mask<WordLanes> first, const Accumulator &a, const Accumulator &b) {
    return {hn::IfThenElse(first, a.value, b.value), hn::IfThenElse(first, a.step, b.step)};
}

/// Both edges in some row; quantities run along the left one alone.
template <std::size_t Count>
struct Edges {
    Accumulator left_x;
    Accumulator right_x;
    std::array<Accumulator, Count> left;
};

/// Stores an accumulator as it is `rows` rows further down, which is row 0 of the triangle's drawn rows.
HWY_INLINE void store_accumulator(const Accumulator &accumulator, Words rows, EdgeAccumulator &to,
                                  std::size_t at) {
    const WordLanes words;
    hn::Store(advanced(accumulator, rows).value, words, &to.start[at]);
    hn::Store(accumulator.step, words, &to.step[at]);
}

template <std::size_t Count>
HWY_INLINE void store_edges(const Edges<Count> &edges, Words rows, EdgePair &pair, std::size_t at) {
    store_accumulator(edges.left_x, rows, pair.left_x, at);
    store_accumulator(edges.right_x, rows, pair.right_x, at);
    for (std::size_t q = 0; q < Count; ++q) {
        store_accumulator(edges.left[q], rows, pair.left[q], at);
    }
}

/// The three edges of a vector of triangles, by the names of fill_triangle: the short one from top to middle,
/// the long one from top to bottom, the last one from middle to bottom.
template <std::size_t Count>
struct TriangleSlopes {
    EdgeSlopes<Count> left;
    EdgeSlopes<Count> right;
    EdgeSlopes<Count> last;
    hn::Mask<FloatLanes> is_long_left;
};

template <std::size_t Count>
HWY_INLINE TriangleSlopes<Count> triangle_slopes(const Vertices<Count> &v) {
    const auto short_edge = edge_slopes(v, top, middle);
    const auto long_edge = edge_slopes(v, top, bottom);
    const auto is_long_left = hn::Gt(short_edge.x, long_edge.x);
    return {choose(is_long_left, long_edge, short_edge), choose(is_long_left, short_edge, long_edge),
            edge_slopes(v, middle, bottom), is_long_left};
}

/// What one pixel to the right adds, taken along the top edge of a triangle with a flat top, else between the
/// edges.
template <std::size_t Count>
HWY_INLINE void store_gradients(const Vertices<Count> &v, const TriangleSlopes<Count> &slopes,
                                hn::Mask<FloatLanes> flat_top, BatchGradients &gradients, std::size_t at) {
    const auto run =
        hn::IfThenElse(flat_top, hn::Sub(v.x[middle], v.x[top]), hn::Sub(slopes.right.x, slopes.left.x));
    for (std::size_t q = 0; q < Count; ++q) {
        const auto rise = hn::IfThenElse(flat_top, hn::Sub(v.quantity[q][middle], v.quantity[q][top]),
                                         hn::Sub(slopes.right.quantities[q], slopes.left.quantities[q]));
        const auto per_pixel = hn::Div(rise, run);
        hn::Store(per_pixel, FloatLanes(), &gradients.per_pixel[q][at]);
        hn::Store(to_fixed(per_pixel), WordLanes(), &gradients.step[q][at]);
    }
}

/// The edges in the top vertex's row, where both start.
template <std::size_t Count>
HWY_INLINE Edges<Count> upper_edges(const Vertices<Count> &v, const TriangleSlopes<Count> &slopes,
                                    Ints top_row) {
    const Floats below_top_row = hn::Sub(v.y[top], hn::ConvertTo(FloatLanes(), top_row));
    Edges<Count> edges;
    edges.left_x = start_accumulator(v.x[top], below_top_row, slopes.left.x);
    edges.right_x = start_accumulator(v.x[top], below_top_row, slopes.right.x);
    for (std::size_t q = 0; q < Count; ++q) {
        edges.left[q] = start_accumulator(v.quantity[q][top], below_top_row, slopes.left.quantities[q]);
    }
    return edges;
}

/// The edges in the middle vertex's row: the long one goes on from `upper`, `rows` rows further down, and the
/// last one starts in place of the short one.
template <std::size_t Count>
HWY_INLINE Edges<Count> lower_edges(const Vertices<Count> &v, const TriangleSlopes<Count> &slopes,
                                    const Edges<Count> &upper, Ints rows, Ints middle_row) {
    const Words down = as_fixed(rows);
    const Floats below_middle_row = hn::Sub(v.y[middle], hn::ConvertTo(FloatLanes(), middle_row));
    const auto is_long_left = hn::RebindMask(WordLanes(), slopes.is_long_left);
    const Accumulator last_x = start_accumulator(v.x[middle], below_middle_row, slopes.last.x);
    Edges<Count> edges;
    edges.left_x = choose(is_long_left, advanced(upper.left_x, down), last_x);
    edges.right_x = choose(is_long_left, last_x, advanced(upper.right_x, down));
    for (std::size_t q = 0; q < Count; ++q) {
        const Accumulator last =
            start_accumulator(v.quantity[q][middle], below_middle_row, slopes.last.quantities[q]);
        edges.left[q] = choose(is_long_left, advanced(upper.left[q], down), last);
    }
    return edges;
}

/// Drawn rows of a vector of triangles: the first one and how many there are.
struct DrawnRows {
    Ints first;
    Ints count;
};

/// The rows from `first` to `last` that are among those drawn.
HWY_INLINE DrawnRows clip_rows(Ints first, Ints last, const RowRange &drawn) {
    const IntLanes ints;
    const auto first_row = hn::Max(first, hn::Set(ints, drawn.first));
    const auto last_row = hn::Min(last, hn::Set(ints, drawn.last));
    // A row number may be the largest integer, so the bounds are compared before they are subtracted.
    const auto is_empty = hn::Gt(first_row, last_row);
    const auto count = hn::Add(hn::Sub(last_row, first_row), hn::Set(ints, 1));
    return {first_row, hn::IfThenZeroElse(is_empty, count)};
}

/// The drawn rows below the middle vertex's, which a triangle with a flat bottom does not have.
HWY_INLINE DrawnRows lower_rows(Ints middle_row, Ints bottom_row, hn::Mask<IntLanes> flat_bottom,
                                const RowRange &drawn) {
    const IntLanes ints;
    // After the largest integer there is no row; the sum would wrap to the smallest one.
    const auto is_last = hn::Eq(middle_row, hn::Set(ints, std::numeric_limits<std::int32_t>::max()));
    const Words first = hn::Add(as_fixed(middle_row), hn::Set(WordLanes(), 1));
    DrawnRows rows = clip_rows(as_signed(first), bottom_row, drawn);
    rows.count = hn::IfThenZeroElse(hn::Or(flat_bottom, is_last), rows.count);
    return rows;
}

/// Stores the first row, counted from the first one of the target, and the numbers of rows of the vector of
/// triangles at `at`; lanes after the last triangle of the batch have none.
HWY_INLINE void store_rows(Ints first_row, Ints upper, Ints lower, std::size_t triangles, BatchEdges &edges,
                           std::size_t at) {
    const IntLanes ints;
    const auto is_triangle = hn::FirstN(ints, triangles - at);
    hn::Store(first_row, ints, &edges.first_row[at]);
    hn::Store(hn::IfThenElseZero(is_triangle, upper), ints, &edges.upper_rows[at]);
    hn::Store(hn::IfThenElseZero(is_triangle, hn::Add(upper, lower)), ints, &edges.rows[at]);
}

/// Sets up the vector of triangles at `at` of the batch for drawing these rows: the first part of
/// fill_triangle, up to its rows.
template <std::size_t Count>
HWY_INLINE void set_up_triangles(const TriangleBatch &batch, std::size_t at, const RowRange &drawn,
                                 BatchEdges &edges) {
    const IntLanes ints;
    const auto v = load_sorted_vertices<Count>(batch, at);
    const Ints top_row = to_int(v.y[top]);
    const Ints middle_row = to_int(v.y[middle]);
    const Ints bottom_row = to_int(v.y[bottom]);
    const auto flat_top = hn::Eq(v.y[top], v.y[middle]);
    const auto flat_bottom = hn::RebindMask(ints, hn::Eq(v.y[middle], v.y[bottom]));
    const auto slopes = triangle_slopes(v);
    store_gradients(v, slopes, flat_top, edges.gradients, at);

    const Edges<Count> upper = upper_edges(v, slopes, top_row);
    DrawnRows upper_rows = clip_rows(top_row, middle_row, drawn);
    upper_rows.count = hn::IfThenZeroElse(hn::RebindMask(ints, flat_top), upper_rows.count);
    store_edges(upper, as_fixed(hn::Sub(upper_rows.first, top_row)), edges.upper, at);

    const Ints to_middle = hn::IfThenElseZero(hn::Gt(middle_row, top_row), hn::Sub(middle_row, top_row));
    const Edges<Count> lower = lower_edges(v, slopes, upper, to_middle, middle_row);
    const DrawnRows below = lower_rows(middle_row, bottom_row, flat_bottom, drawn);

    // A triangle with rows on both sides of its middle vertex has them without a gap, so that one number
    // counts through them all.
    const Ints first_row =
        hn::IfThenElse(hn::Gt(upper_rows.count, hn::Zero(ints)), upper_rows.first, below.first);
    store_edges(lower, as_fixed(hn::Sub(first_row, middle_row)), edges.lower, at);
    const Ints row_of_target = hn::Sub(first_row, hn::Set(ints, drawn.first));
    store_rows(row_of_target, upper_rows.count, below.count, batch.count, edges, at);
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
