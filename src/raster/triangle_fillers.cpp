// SPDX-License-Identifier: MIT
// The triangle setup, the walk down the edges in fixed point and the depth-tested spans, which all fillers
// share. They are templates over the number of quantities that a filler interpolates: depth for
// fill_tri_flat; depth, map column and map row for fill_tri_mapped.
#include "raster/triangle_fillers.h"

#include "display/frame_buffers.h"
#include "raster/fixed_point.h"
#include "raster/texture_map.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace {

/// Where one interpolated quantity of the three vertices is in the block.
using QuantitySlots = std::array<std::size_t, 3>;

constexpr QuantitySlots x_slots{0, 3, 6};
constexpr QuantitySlots y_slots{1, 4, 7};
constexpr QuantitySlots depth_slots{2, 5, 8};
constexpr QuantitySlots colour_slots{9, 10, 11};
constexpr QuantitySlots map_column_slots{12, 14, 16};
constexpr QuantitySlots map_row_slots{13, 15, 17};

/// The quantities that a filler interpolates; the depth always comes first.
template <std::size_t Count>
using QuantityTable = std::array<QuantitySlots, Count>;

template <std::size_t Count>
using Values = std::array<float, Count>;
template <std::size_t Count>
using Accumulators = std::array<Fixed, Count>;

template <std::size_t Count>
void swap_vertices(TriangleParams &t, const QuantityTable<Count> &quantities, std::size_t a, std::size_t b) {
    std::swap(t[x_slots[a]], t[x_slots[b]]);
    std::swap(t[y_slots[a]], t[y_slots[b]]);
    for (const QuantitySlots &slots : quantities) {
        std::swap(t[slots[a]], t[slots[b]]);
    }
}

/// Sorts the vertices from top to bottom; those of equal y keep their order.
template <std::size_t Count>
void sort_vertices(TriangleParams &t, const QuantityTable<Count> &quantities) {
    for (const std::size_t upper : {std::size_t{0}, std::size_t{1}, std::size_t{0}}) {
        if (t[y_slots[upper]] > t[y_slots[upper + 1]]) {
            swap_vertices(t, quantities, upper, upper + 1);
        }
    }
}

/// How much x and the quantities of an edge change per row.
template <std::size_t Count>
struct EdgeSlopes {
    float x;
    Values<Count> quantities;
};

template <std::size_t Count>
EdgeSlopes<Count> edge_slopes(const TriangleParams &t, const QuantityTable<Count> &quantities,
                              std::size_t from, std::size_t to) {
    const float rows = t[y_slots[to]] - t[y_slots[from]];
    EdgeSlopes<Count> slopes;
    slopes.x = (t[x_slots[to]] - t[x_slots[from]]) / rows;
    for (std::size_t q = 0; q < Count; ++q) {
        slopes.quantities[q] = (t[quantities[q][to]] - t[quantities[q][from]]) / rows;
    }
    return slopes;
}

/// The two edges at a row in 16.16, and what each further row adds to them. Quantities are interpolated along
/// the left edge only.
template <std::size_t Count>
struct Edges {
    Fixed left_x;
    Fixed right_x;
    Accumulators<Count> left;
    Fixed left_x_step;
    Fixed right_x_step;
    Accumulators<Count> left_step;

    void advance(Fixed rows) {
        left_x += rows * left_x_step;
        right_x += rows * right_x_step;
        for (std::size_t q = 0; q < Count; ++q) {
            left[q] += rows * left_step[q];
        }
    }

    /// Starts the right edge at the vertex `from`, moved up by `above` to the y of the vertex's row.
    void start_right(const TriangleParams &t, std::size_t from, float above, float slope) {
        right_x = to_fixed(t[x_slots[from]] - above * slope);
        right_x_step = to_fixed(slope);
    }

    /// Starts the left edge in the same way, with its quantities.
    void start_left(const TriangleParams &t, const QuantityTable<Count> &quantities, std::size_t from,
                    float above, const EdgeSlopes<Count> &slopes) {
        left_x = to_fixed(t[x_slots[from]] - above * slopes.x);
        left_x_step = to_fixed(slopes.x);
        for (std::size_t q = 0; q < Count; ++q) {
            left[q] = to_fixed(t[quantities[q][from]] - above * slopes.quantities[q]);
            left_step[q] = to_fixed(slopes.quantities[q]);
        }
    }
};

/// What one pixel to the right adds to each quantity, as float and in 16.16. Constant within a triangle.
template <std::size_t Count>
struct Gradients {
    Values<Count> per_pixel;
    Accumulators<Count> step;
};

/// Draws the pixels of one row from the left edge's up to the right edge's, without the latter. The
/// quantities are those of the left edge, moved to the first pixel's own x and then by one whole pixel, so
/// every pixel shows the value that belongs one pixel to its right.
template <std::size_t Count, typename Colour>
void draw_span(int row, const Edges<Count> &edges, const Gradients<Count> &gradients, Colour colour) {
    const std::int32_t left = integer_part(edges.left_x);
    const std::int32_t right = integer_part(edges.right_x);
    if (right <= left) {
        return;
    }
    const std::int32_t first = std::max<std::int32_t>(left, 0);
    const std::int32_t end = std::min(right, frame_width);

    const Fixed skipped = static_cast<Fixed>(first) - static_cast<Fixed>(left);
    const auto beyond_pixel = static_cast<float>(edges.left_x & 0xFFFF);
    Accumulators<Count> value;
    for (std::size_t q = 0; q < Count; ++q) {
        value[q] = edges.left[q] - static_cast<Fixed>(to_int(beyond_pixel * gradients.per_pixel[q]));
        value[q] += (skipped + 1) * gradients.step[q];
    }

    const std::size_t row_start = static_cast<std::size_t>(row) * static_cast<std::size_t>(frame_width);
    std::uint8_t *pixels = chunkybuf1.get() + row_start;
    std::uint16_t *depths = zbuf.get() + row_start;
    for (std::int32_t x = first; x < end; ++x) {
        // From 16.16 to 8.8.
        const std::int32_t depth = as_signed(value[0]) >> 8;
        if (depths[x] < depth) {
            pixels[x] = colour(value);
            depths[x] = static_cast<std::uint16_t>(depth);
        }
        for (std::size_t q = 0; q < Count; ++q) {
            value[q] += gradients.step[q];
        }
    }
}

/// Draws the rows `first` to `last` between two edges, which are at the row `first`. Rows above the drawn
/// rows are skipped by one multiplication.
template <std::size_t Count, typename Colour>
void draw_rows(std::int64_t first, std::int64_t last, Edges<Count> edges, const Gradients<Count> &gradients,
               Colour colour) {
    const std::int64_t first_row = std::max<std::int64_t>(first, first_drawn_row);
    const std::int64_t last_row = std::min<std::int64_t>(last, frame_height - first_drawn_row);
    if (first_row > last_row) {
        return;
    }
    edges.advance(static_cast<Fixed>(first_row - first));
    for (auto row = static_cast<int>(first_row); row <= last_row; ++row) {
        draw_span(row, edges, gradients, colour);
        edges.advance(1);
    }
}

/// Sorts the vertices of one triangle, sets up its edges and draws its rows. `colour` computes a pixel's byte
/// from the quantities' accumulators.
template <std::size_t Count, typename Colour>
void fill_triangle(TriangleParams &t, const QuantityTable<Count> &quantities, Colour colour) {
    constexpr std::size_t top = 0;
    constexpr std::size_t middle = 1;
    constexpr std::size_t bottom = 2;

    sort_vertices(t, quantities);
    const float top_y = t[y_slots[top]];
    const float middle_y = t[y_slots[middle]];
    const float bottom_y = t[y_slots[bottom]];
    const std::int32_t top_row = to_int(top_y);
    const std::int32_t middle_row = to_int(middle_y);
    const std::int32_t bottom_row = to_int(bottom_y);
    const bool flat_top = top_y == middle_y;

    const EdgeSlopes<Count> short_edge = edge_slopes(t, quantities, top, middle);
    const EdgeSlopes<Count> long_edge = edge_slopes(t, quantities, top, bottom);
    const bool long_edge_left = short_edge.x > long_edge.x;
    const EdgeSlopes<Count> &left_edge = long_edge_left ? long_edge : short_edge;
    const EdgeSlopes<Count> &right_edge = long_edge_left ? short_edge : long_edge;

    Gradients<Count> gradients;
    for (std::size_t q = 0; q < Count; ++q) {
        const QuantitySlots &slots = quantities[q];
        gradients.per_pixel[q] =
            flat_top ? (t[slots[middle]] - t[slots[top]]) / (t[x_slots[middle]] - t[x_slots[top]])
                     : (right_edge.quantities[q] - left_edge.quantities[q]) / (right_edge.x - left_edge.x);
        gradients.step[q] = to_fixed(gradients.per_pixel[q]);
    }

    Edges<Count> edges;
    const float below_top_row = top_y - static_cast<float>(top_row);
    edges.start_left(t, quantities, top, below_top_row, left_edge);
    edges.start_right(t, top, below_top_row, right_edge.x);
    if (!flat_top) {
        draw_rows(top_row, middle_row, edges, gradients, colour);
    }
    if (middle_y == bottom_y) {
        return;
    }

    // The long edge continues from the middle vertex's row; the short one is replaced by the last edge.
    if (middle_row > top_row) {
        edges.advance(static_cast<Fixed>(middle_row) - static_cast<Fixed>(top_row));
    }
    const float below_middle_row = middle_y - static_cast<float>(middle_row);
    const EdgeSlopes<Count> last_edge = edge_slopes(t, quantities, middle, bottom);
    if (long_edge_left) {
        edges.start_right(t, middle, below_middle_row, last_edge.x);
    } else {
        edges.start_left(t, quantities, middle, below_middle_row, last_edge);
    }
    edges.advance(1);
    draw_rows(std::int64_t{middle_row} + 1, bottom_row, edges, gradients, colour);
}

/// The integer part of a colour accumulator.
std::uint8_t colour_byte(Fixed value) {
    return static_cast<std::uint8_t>(value >> 16);
}

} // namespace

void fill_tri_zcolour(TriangleParams *triangle) {
    constexpr QuantityTable<1> quantities{depth_slots};
    fill_triangle(*triangle, quantities, [](const Accumulators<1> &value) { return colour_byte(value[0]); });
}

void fill_tri_flat(TriangleParams *triangle) {
    constexpr QuantityTable<1> quantities{depth_slots};
    const auto colour = static_cast<std::uint8_t>(to_int((*triangle)[9]));
    fill_triangle(*triangle, quantities, [colour](const Accumulators<1> &) { return colour; });
}

void fill_tri_gouraud(TriangleParams *triangle) {
    constexpr QuantityTable<2> quantities{depth_slots, colour_slots};
    fill_triangle(*triangle, quantities, [](const Accumulators<2> &value) { return colour_byte(value[1]); });
}

void fill_tri_mapped(TriangleParams *triangle) {
    constexpr QuantityTable<3> quantities{depth_slots, map_column_slots, map_row_slots};
    const std::uint8_t *map = envmap.get();
    fill_triangle(*triangle, quantities, [map](const Accumulators<3> &value) {
        // The low 16 bits of the sum are the texel's index. They wrap, so no input leads out of the map.
        const std::uint32_t column = value[1] >> 16;
        const std::uint32_t row = value[2] >> 16;
        return map[(map_centre + column + row * 256) & 0xFFFF];
    });
}
