// SPDX-License-Identifier: MIT
// Gives a flat figure thickness and softly rounded edges.
#pragma once

#include "mesh.h"

#include <functional>
#include <vector>

namespace zelvo_data {

// A flat figure (x right, y up) made of convex pieces with counter-clockwise corners. Points at the same
// place are shared, so neighbouring pieces must meet corner to corner.
class FlatFigure {
public:
    void add_piece(const std::vector<Point2> &corners);

    // Adds a four-sided patch as a net of `columns` x `rows` smaller pieces. The corners run
    // counter-clockwise; columns divide the sides 0-1 and 3-2, rows the sides 1-2 and 0-3.
    void add_patch(const std::vector<Point2> &corners, int columns, int rows);

    const std::vector<Point2> &points() const { return points_; }
    const std::vector<std::vector<std::size_t>> &pieces() const { return pieces_; }

private:
    std::size_t shared_point(const Point2 &place);

    std::vector<Point2> points_;
    std::vector<std::vector<std::size_t>> pieces_;
};

struct ExtrusionStyle {
    double thickness;
    double rounding; // Radius of the rounded edges, at most half the thickness.
    int rounding_steps;
    std::uint16_t face_surface;
    std::uint16_t side_surface;
    // Moves every finished point to its final place, for instance onto a cylinder.
    std::function<Point3(const Point3 &)> placement;
};

// The figure becomes the front face (towards the viewer) and, mirrored in depth, the back face. The rounded
// edges are added around it, so the body is larger than the figure by the rounding on every side.
void extrude(Mesh &mesh, const FlatFigure &figure, const ExtrusionStyle &style);

} // namespace zelvo_data
