// SPDX-License-Identifier: MIT
// Walks a triangle row by row and pixel by pixel, including those outside the frame.
#include "raster/reference_triangle_walker.h"

#include "support/reference_conversion.h"

#include <array>
#include <utility>

ReferenceFrame::ReferenceFrame(int frame_columns, int frame_rows)
    : width(frame_columns), height(frame_rows),
      pixels(static_cast<std::size_t>(frame_columns) * static_cast<std::size_t>(frame_rows)),
      depths(pixels.size()) {}

namespace {

constexpr std::size_t most_quantities = 3;
using Floats = std::array<float, most_quantities>;
using Words = std::array<std::uint32_t, most_quantities>;

struct Vertex {
    float x;
    float y;
    /// The depth, then the colour or the map coordinates.
    Floats q;
};

struct Slope {
    float x;
    Floats q;
};

struct Edge {
    std::uint32_t x;
    std::uint32_t x_step;
    Words q;
    Words q_step;
};

std::uint32_t fixed(float value) {
    return static_cast<std::uint32_t>(reference_int(static_cast<double>(value) * 65536.0));
}

std::int32_t whole(std::uint32_t value) {
    return static_cast<std::int32_t>(value) >> 16;
}

std::size_t quantities_of(Filler filler) {
    switch (filler) {
    case Filler::gouraud:
        return 2;
    case Filler::mapped:
        return 3;
    default:
        return 1;
    }
}

/// The slot of quantity `q` of vertex `v`.
std::size_t slot_of(Filler filler, std::size_t v, std::size_t q) {
    if (q == 0) {
        return 3 * v + 2;
    }
    return filler == Filler::gouraud ? 9 + v : 12 + 2 * v + (q - 1);
}

std::array<Vertex, 3> vertices_of(const TriangleParams &block, Filler filler) {
    std::array<Vertex, 3> vertices{};
    for (std::size_t v = 0; v < 3; ++v) {
        vertices[v].x = block[3 * v];
        vertices[v].y = block[3 * v + 1];
        for (std::size_t q = 0; q < quantities_of(filler); ++q) {
            vertices[v].q[q] = block[slot_of(filler, v, q)];
        }
    }
    return vertices;
}

void store(TriangleParams &block, Filler filler, const std::array<Vertex, 3> &vertices) {
    for (std::size_t v = 0; v < 3; ++v) {
        block[3 * v] = vertices[v].x;
        block[3 * v + 1] = vertices[v].y;
        for (std::size_t q = 0; q < quantities_of(filler); ++q) {
            block[slot_of(filler, v, q)] = vertices[v].q[q];
        }
    }
}

Slope slope_between(const Vertex &from, const Vertex &to) {
    Slope slope{};
    const float rows = to.y - from.y;
    slope.x = (to.x - from.x) / rows;
    for (std::size_t q = 0; q < most_quantities; ++q) {
        slope.q[q] = (to.q[q] - from.q[q]) / rows;
    }
    return slope;
}

Edge edge_from(const Vertex &vertex, float fraction, const Slope &slope) {
    Edge edge{};
    const float back_x = fraction * slope.x;
    edge.x = fixed(vertex.x - back_x);
    edge.x_step = fixed(slope.x);
    for (std::size_t q = 0; q < most_quantities; ++q) {
        const float back_q = fraction * slope.q[q];
        edge.q[q] = fixed(vertex.q[q] - back_q);
        edge.q_step[q] = fixed(slope.q[q]);
    }
    return edge;
}

void step_down(Edge &edge) {
    edge.x += edge.x_step;
    for (std::size_t q = 0; q < most_quantities; ++q) {
        edge.q[q] += edge.q_step[q];
    }
}

void step_up(Edge &edge) {
    edge.x -= edge.x_step;
    for (std::size_t q = 0; q < most_quantities; ++q) {
        edge.q[q] -= edge.q_step[q];
    }
}

struct Walk {
    ReferenceFrame &frame;
    Filler filler;
    const std::uint8_t *map;
    std::uint8_t flat_colour;
    Floats gradient;
    Edge left;
    Edge right;

    std::uint8_t colour(const Words &q) const {
        switch (filler) {
        case Filler::zcolour:
            return static_cast<std::uint8_t>(whole(q[0]));
        case Filler::flat:
            return flat_colour;
        case Filler::gouraud:
            return static_cast<std::uint8_t>(whole(q[1]));
        default:
            return map[static_cast<std::uint16_t>(128 * 256 + 128 + whole(q[1]) + whole(q[2]) * 256)];
        }
    }

    void draw(std::int64_t y) const {
        if (y <= 5 || y >= frame.height - 5) {
            return;
        }
        const std::int32_t first = whole(left.x);
        const std::int32_t end = whole(right.x);
        if (end <= first) {
            return;
        }
        Words q = left.q;
        Words step{};
        for (std::size_t i = 0; i < most_quantities; ++i) {
            const float correction = static_cast<float>(left.x & 0xFFFFU) * gradient[i];
            step[i] = fixed(gradient[i]);
            q[i] -= static_cast<std::uint32_t>(reference_int(correction));
            q[i] += step[i];
        }
        for (std::int32_t x = first; x < end; ++x) {
            if (x >= 0 && x < frame.width) {
                const auto at = static_cast<std::size_t>(y * frame.width + x);
                const std::int32_t d = static_cast<std::int32_t>(q[0]) >> 8;
                if (std::int32_t{frame.depths[at]} < d) {
                    frame.pixels[at] = colour(q);
                    frame.depths[at] = static_cast<std::uint16_t>(d & 0xFFFF);
                }
            }
            for (std::size_t i = 0; i < most_quantities; ++i) {
                q[i] += step[i];
            }
        }
    }
};

} // namespace

void walk_triangle(ReferenceFrame &frame, TriangleParams &block, Filler filler, const std::uint8_t *map) {
    std::array<Vertex, 3> v = vertices_of(block, filler);
    if (v[0].y > v[1].y) {
        std::swap(v[0], v[1]);
    }
    if (v[1].y > v[2].y) {
        std::swap(v[1], v[2]);
    }
    if (v[0].y > v[1].y) {
        std::swap(v[0], v[1]);
    }
    store(block, filler, v);
    const Vertex &top = v[0];
    const Vertex &middle = v[1];
    const Vertex &bottom = v[2];

    const Slope to_middle = slope_between(top, middle);
    const Slope to_bottom = slope_between(top, bottom);
    const bool long_is_left = to_middle.x > to_bottom.x;
    const Slope &left_slope = long_is_left ? to_bottom : to_middle;
    const Slope &right_slope = long_is_left ? to_middle : to_bottom;

    const auto flat_colour = static_cast<std::uint8_t>(reference_int(block[9]) & 0xFF);
    Walk walk{frame, filler, map, flat_colour, {}, {}, {}};
    for (std::size_t q = 0; q < most_quantities; ++q) {
        walk.gradient[q] = top.y == middle.y
                               ? (middle.q[q] - top.q[q]) / (middle.x - top.x)
                               : (right_slope.q[q] - left_slope.q[q]) / (right_slope.x - left_slope.x);
    }

    const std::int32_t top_row = reference_int(top.y);
    const std::int32_t middle_row = reference_int(middle.y);
    const std::int32_t bottom_row = reference_int(bottom.y);
    walk.left = edge_from(top, top.y - static_cast<float>(top_row), left_slope);
    walk.right = edge_from(top, top.y - static_cast<float>(top_row), right_slope);

    const bool has_top_half = top.y != middle.y;
    if (has_top_half) {
        for (std::int64_t y = top_row; y <= middle_row; ++y) {
            walk.draw(y);
            step_down(walk.left);
            step_down(walk.right);
        }
    }
    if (middle.y == bottom.y) {
        return;
    }

    Edge &continuing = long_is_left ? walk.left : walk.right;
    Edge &ended = long_is_left ? walk.right : walk.left;
    if (has_top_half) {
        step_up(continuing);
    }
    ended = edge_from(middle, middle.y - static_cast<float>(middle_row), slope_between(middle, bottom));
    for (std::int64_t y = std::int64_t{middle_row} + 1; y <= bottom_row; ++y) {
        step_down(walk.left);
        step_down(walk.right);
        walk.draw(y);
    }
}
