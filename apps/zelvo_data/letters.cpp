// SPDX-License-Identifier: MIT
// The word ZELVO in block letters with rounded edges, bent around an upright cylinder.
#include "objects.h"

#include "exact_trig.h"
#include "extrusion.h"

#include <functional>
#include <utility>
#include <vector>

namespace zelvo_data {

namespace {

// Letters are drawn in a box from y = 0 to the height, as thin as their flat faces; the rounded edges then
// add their radius on every side. Patches are divided in x so that the bend looks round.
constexpr double letter_height = 54.0;
constexpr double rounding = 3.2;
constexpr double gap = 12.0;
constexpr double thickness = 19.0;
constexpr double bend_radius = 116.0;
constexpr double barrel_bulge = 4.5;

struct Letter {
    FlatFigure figure;
    double width;
    double gap_after = gap; // Distance to the face of the next letter.
};

std::vector<Point2> box(double left, double bottom, double right, double top) {
    return {{left, bottom}, {right, bottom}, {right, top}, {left, top}};
}

// Pieces next to the two acute corners are longer than the rounded edges that meet there.
Letter letter_z() {
    FlatFigure figure;
    figure.add_patch(box(0.0, 47.5, 19.0, 54.0), 3, 2);
    figure.add_patch(box(19.0, 47.5, 29.0, 54.0), 3, 2);
    figure.add_patch({{0.0, 6.5}, {10.0, 6.5}, {29.0, 47.5}, {19.0, 47.5}}, 3, 7);
    figure.add_patch(box(0.0, 0.0, 10.0, 6.5), 3, 2);
    figure.add_patch(box(10.0, 0.0, 29.0, 6.5), 3, 2);
    return {std::move(figure), 29.0};
}

Letter letter_e() {
    FlatFigure figure;
    const double floors[] = {0.0, 6.5, 23.75, 30.25, 47.5, 54.0};
    const double arm_ends[] = {25.0, 0.0, 21.0, 0.0, 25.0};
    for (int i = 0; i < 5; ++i) {
        const bool has_arm = arm_ends[i] > 0.0;
        const int rows = has_arm ? 2 : 4;
        figure.add_patch(box(0.0, floors[i], 6.5, floors[i + 1]), 2, rows);
        if (has_arm) {
            figure.add_patch(box(6.5, floors[i], arm_ends[i], floors[i + 1]), 4, rows);
        }
    }
    return {std::move(figure), 25.0};
}

Letter letter_l() {
    FlatFigure figure;
    figure.add_patch(box(0.0, 6.5, 6.5, 54.0), 2, 10);
    figure.add_patch(box(0.0, 0.0, 6.5, 6.5), 2, 2);
    figure.add_patch(box(6.5, 0.0, 24.0, 6.5), 4, 2);
    // The V leans over the foot of the L; moving it closer evens out the spacing of the word.
    return {std::move(figure), 24.0, 3.0};
}

// The inner edges are parallel to the outer ones. The notch between them is blunt and just wide enough for
// the rounded edges of both sides to fit in.
Letter letter_v() {
    constexpr double width = 39.0;
    constexpr double centre = width / 2.0;
    constexpr double half_foot = 3.3;
    constexpr double half_notch = 3.4;
    constexpr double stroke = 6.8;
    constexpr double slant = (centre - half_foot) / letter_height;
    constexpr double notch = letter_height - (centre - half_notch - stroke) / slant;
    constexpr double shoulder = slant * (letter_height - notch);
    const auto mirrored = [](const std::vector<Point2> &p) {
        return std::vector<Point2>{{width - p[1].x, p[1].y},
                                   {width - p[0].x, p[0].y},
                                   {width - p[3].x, p[3].y},
                                   {width - p[2].x, p[2].y}};
    };
    const std::vector<Point2> arm = {
        {shoulder, notch}, {centre - half_notch, notch}, {stroke, letter_height}, {0.0, letter_height}};
    const std::vector<Point2> base = {{centre - half_foot, 0.0},
                                      {centre - half_foot / 3.0, 0.0},
                                      {centre - half_notch, notch},
                                      {shoulder, notch}};
    FlatFigure figure;
    figure.add_patch(arm, 2, 8);
    figure.add_patch(mirrored(arm), 2, 8);
    figure.add_patch(base, 2, 5);
    figure.add_patch(mirrored(base), 2, 5);
    figure.add_patch({base[1], mirrored(base)[0], mirrored(base)[3], base[2]}, 2, 5);
    return {std::move(figure), width};
}

// The round letter reaches slightly over both lines; to the eye it then has the height of the others.
Letter letter_o() {
    constexpr int segments = 44;
    constexpr double overshoot = 1.0;
    const Point2 outer{18.0, letter_height / 2.0 + overshoot};
    const Point2 inner{11.5, letter_height / 2.0 - 5.8};
    const auto on_ellipse = [&outer](const Point2 &radii, int step) {
        const double turns = static_cast<double>(step % segments) / segments;
        return Point2{outer.x + radii.x * cosine_of_turns(turns),
                      letter_height / 2.0 + radii.y * sine_of_turns(turns)};
    };
    FlatFigure figure;
    for (int i = 0; i < segments; ++i) {
        figure.add_patch(
            {on_ellipse(inner, i), on_ellipse(outer, i), on_ellipse(outer, i + 1), on_ellipse(inner, i + 1)},
            2, 1);
    }
    return {std::move(figure), 2.0 * outer.x};
}

// The word is in the middle of the arc, which bulges towards the viewer. It also bulges a little between
// its lower and upper line, so that reflections run across the letters instead of filling them evenly.
std::function<Point3(const Point3 &)> bend_from(double left) {
    return [left](const Point3 &p) {
        const double turns = (left + p.x) / (2.0 * pi * bend_radius);
        const double height = p.y - letter_height / 2.0;
        const double relative_height = height / (letter_height / 2.0);
        const double distance = bend_radius - p.z - barrel_bulge * relative_height * relative_height;
        return Point3{distance * sine_of_turns(turns), height,
                      bend_radius - distance * cosine_of_turns(turns)};
    };
}

} // namespace

Mesh build_letters() {
    Mesh mesh;
    const std::uint16_t face = mesh.add_surface({"Letter faces", {255, 176, 64}, 0, 256});
    const std::uint16_t side = mesh.add_surface({"Letter sides", {214, 122, 40}, 0, 240});
    const std::vector<Letter> word = {letter_z(), letter_e(), letter_l(), letter_v(), letter_o()};
    double total = -word.back().gap_after;
    for (const Letter &letter : word) {
        total += letter.width + letter.gap_after;
    }
    double left = -total / 2.0;
    for (const Letter &letter : word) {
        extrude(mesh, letter.figure, {thickness, rounding, 2, face, side, bend_from(left)});
        left += letter.width + letter.gap_after;
    }
    return mesh;
}

} // namespace zelvo_data
