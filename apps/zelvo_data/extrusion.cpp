// SPDX-License-Identifier: MIT
// Finds the rim of a flat figure and builds faces, rounded edges and side walls from it.
#include "extrusion.h"

#include "exact_trig.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <stdexcept>
#include <utility>

namespace zelvo_data {

std::size_t FlatFigure::shared_point(const Point2 &place) {
    for (std::size_t i = 0; i < points_.size(); ++i) {
        if (std::abs(points_[i].x - place.x) < 1.0e-6 && std::abs(points_[i].y - place.y) < 1.0e-6) {
            return i;
        }
    }
    points_.push_back(place);
    return points_.size() - 1;
}

void FlatFigure::add_piece(const std::vector<Point2> &corners) {
    std::vector<std::size_t> piece;
    piece.reserve(corners.size());
    for (const Point2 &corner : corners) {
        piece.push_back(shared_point(corner));
    }
    pieces_.push_back(std::move(piece));
}

void FlatFigure::add_patch(const std::vector<Point2> &corners, int columns, int rows) {
    const auto at = [&](int column, int row) {
        const double u = static_cast<double>(column) / columns;
        const double v = static_cast<double>(row) / rows;
        const auto blend = [&](double Point2::*part) {
            return (1.0 - v) * ((1.0 - u) * corners[0].*part + u * corners[1].*part) +
                   v * ((1.0 - u) * corners[3].*part + u * corners[2].*part);
        };
        return Point2{blend(&Point2::x), blend(&Point2::y)};
    };
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            add_piece({at(column, row), at(column + 1, row), at(column + 1, row + 1), at(column, row + 1)});
        }
    }
}

namespace {

using Edge = std::pair<std::size_t, std::size_t>;

// One point of the rim with the edges before and after it.
struct RimPoint {
    std::size_t previous = 0;
    std::size_t next = 0;
    Point2 outward{0.0, 0.0}; // Moving along it by t moves both neighbouring edges outwards by t.
    bool corner = false;
};

Point2 outward_of_edge(const Point2 &from, const Point2 &to) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = std::sqrt(dx * dx + dy * dy);
    return {dy / length, -dx / length};
}

// An edge belongs to the rim if no neighbouring piece runs along it in the opposite direction.
std::map<std::size_t, RimPoint> find_rim(const FlatFigure &figure) {
    std::set<Edge> edges;
    for (const auto &piece : figure.pieces()) {
        for (std::size_t i = 0; i < piece.size(); ++i) {
            edges.emplace(piece[i], piece[(i + 1) % piece.size()]);
        }
    }
    std::map<std::size_t, RimPoint> rim;
    std::size_t rim_edges = 0;
    for (const auto &[from, to] : edges) {
        if (edges.count({to, from}) == 0) {
            rim[from].next = to;
            rim[to].previous = from;
            ++rim_edges;
        }
    }
    if (rim_edges != rim.size()) {
        throw std::logic_error("the rim of a flat figure touches itself");
    }
    const auto &points = figure.points();
    for (auto &[own, point] : rim) {
        const Point2 before = outward_of_edge(points[point.previous], points[own]);
        const Point2 after = outward_of_edge(points[own], points[point.next]);
        const double agreement = before.x * after.x + before.y * after.y;
        point.outward = {(before.x + after.x) / (1.0 + agreement), (before.y + after.y) / (1.0 + agreement)};
        point.corner = agreement < 0.8; // Sharper than about 37 degrees.
    }
    return rim;
}

class Extruder {
public:
    Extruder(Mesh &mesh, const FlatFigure &figure, const ExtrusionStyle &style)
        : mesh_(mesh), figure_(figure), style_(style), rim_(find_rim(figure)) {}

    void build() {
        const std::vector<std::uint16_t> front = add_face_points(-1.0);
        const std::vector<std::uint16_t> back = add_face_points(1.0);
        for (const auto &piece : figure_.pieces()) {
            std::vector<std::uint16_t> seen_from_front;
            std::vector<std::uint16_t> seen_from_back;
            for (const std::size_t point : piece) {
                seen_from_front.insert(seen_from_front.begin(), front[point]);
                seen_from_back.push_back(back[point]);
            }
            mesh_.add_polygon(seen_from_front, style_.face_surface);
            mesh_.add_polygon(seen_from_back, style_.face_surface);
        }
        for (const auto &[own, point] : rim_) {
            const auto start = side_column(own, Edge(own, point.next), front, back);
            const auto end = side_column(point.next, Edge(own, point.next), front, back);
            for (std::size_t i = 0; i + 1 < start.size(); ++i) {
                mesh_.add_polygon({start[i], end[i], end[i + 1], start[i + 1]}, style_.side_surface);
            }
        }
    }

private:
    std::uint16_t add_point(std::size_t own, double growth, double z) {
        Point2 place = figure_.points()[own];
        const auto rim_point = rim_.find(own);
        if (rim_point != rim_.end()) {
            place.x += growth * rim_point->second.outward.x;
            place.y += growth * rim_point->second.outward.y;
        }
        return mesh_.add_point(style_.placement({place.x, place.y, z}));
    }

    std::vector<std::uint16_t> add_face_points(double side) {
        std::vector<std::uint16_t> face;
        for (std::size_t i = 0; i < figure_.points().size(); ++i) {
            face.push_back(add_point(i, 0.0, side * style_.thickness / 2.0));
        }
        return face;
    }

    // The points from the front face over the rounded edges to the back face. At a corner of the rim each of
    // the two edges gets its own column, which keeps the vertical edge sharp.
    const std::vector<std::uint16_t> &side_column(std::size_t own, const Edge &edge,
                                                  const std::vector<std::uint16_t> &front,
                                                  const std::vector<std::uint16_t> &back) {
        const Edge key = rim_.at(own).corner ? edge : Edge(own, own);
        const auto [entry, is_new] = columns_.try_emplace(std::pair(own, key));
        std::vector<std::uint16_t> &column = entry->second;
        if (!is_new) {
            return column;
        }
        const double radius = style_.rounding;
        const double straight = style_.thickness / 2.0 - radius;
        const int steps = style_.rounding_steps;
        column.push_back(front[own]);
        for (int i = 1; i <= steps; ++i) {
            const double turns = 0.25 * i / steps;
            column.push_back(
                add_point(own, radius * sine_of_turns(turns), -straight - radius * cosine_of_turns(turns)));
        }
        for (int i = steps; i >= 1; --i) {
            const double turns = 0.25 * i / steps;
            column.push_back(
                add_point(own, radius * sine_of_turns(turns), straight + radius * cosine_of_turns(turns)));
        }
        column.push_back(back[own]);
        return column;
    }

    Mesh &mesh_;
    const FlatFigure &figure_;
    const ExtrusionStyle &style_;
    std::map<std::size_t, RimPoint> rim_;
    std::map<std::pair<std::size_t, Edge>, std::vector<std::uint16_t>> columns_;
};

} // namespace

void extrude(Mesh &mesh, const FlatFigure &figure, const ExtrusionStyle &style) {
    Extruder(mesh, figure, style).build();
}

} // namespace zelvo_data
