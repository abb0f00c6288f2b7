// SPDX-License-Identifier: MIT
// A cogwheel with twelve tapered teeth, six waisted spokes and a raised hub.
#include "objects.h"

#include "exact_trig.h"
#include "extrusion.h"

#include <vector>

namespace zelvo_data {

namespace {

// All sizes are those of the flat faces; the rounded edges add their radius on every side.
constexpr int teeth = 12;
constexpr int steps_per_tooth = 8;
constexpr int tooth_width_steps = 2;
constexpr int rim_steps = teeth * steps_per_tooth;
constexpr int hub_steps = 48;
constexpr int spokes = 6;
constexpr double bore_radius = 19.5;
constexpr double hub_radius = 27.0;
constexpr double rim_radius = 66.0;
constexpr double root_radius = 76.0;
constexpr double tip_radius = 97.0;

Point2 on_circle(double radius, double turns) {
    return {radius * cosine_of_turns(turns), radius * sine_of_turns(turns)};
}

void add_ring(FlatFigure &figure, double inner, double outer, int steps, int rows) {
    for (int i = 0; i < steps; ++i) {
        const double from = static_cast<double>(i) / steps;
        const double to = static_cast<double>(i + 1) / steps;
        figure.add_patch(
            {on_circle(inner, from), on_circle(outer, from), on_circle(outer, to), on_circle(inner, to)},
            rows, 1);
    }
}

// A tooth narrows towards its tip: its points there are moved towards its middle line.
void add_tooth(FlatFigure &figure, int first_step) {
    constexpr double taper = 0.5;
    const double middle = first_step + tooth_width_steps / 2.0;
    for (int i = first_step; i < first_step + tooth_width_steps; ++i) {
        const auto root = [](double step) { return on_circle(root_radius, step / rim_steps); };
        const auto tip = [middle](double step) {
            return on_circle(tip_radius, (middle + (step - middle) * taper) / rim_steps);
        };
        figure.add_patch({root(i), tip(i), tip(i + 1), root(i + 1)}, 3, 1);
    }
}

// The spoke lies along the x axis, waisted in the middle; both ends are buried in the hub and the rim.
FlatFigure spoke() {
    constexpr int pieces = 8;
    constexpr double start = hub_radius - 2.0;
    constexpr double end = rim_radius + 2.0;
    const auto half_width = [](int piece) {
        const double from_middle = 2.0 * piece / pieces - 1.0;
        return 2.2 + 4.8 * from_middle * from_middle;
    };
    FlatFigure figure;
    for (int i = 0; i < pieces; ++i) {
        const double from = start + (end - start) * i / pieces;
        const double to = start + (end - start) * (i + 1) / pieces;
        figure.add_patch({{from, -half_width(i)},
                          {to, -half_width(i + 1)},
                          {to, half_width(i + 1)},
                          {from, half_width(i)}},
                         1, 3);
    }
    return figure;
}

// Shows the wheel at an angle before the first rotation. (0.8, 0.6) and (12/13, 5/13) are exact cosines and
// sines of one angle each.
Point3 presented_wheel(const Point3 &p) {
    const Point3 turned{0.8 * p.x + 0.6 * p.z, p.y, 0.8 * p.z - 0.6 * p.x};
    return {turned.x, (12.0 * turned.y + 5.0 * turned.z) / 13.0, (12.0 * turned.z - 5.0 * turned.y) / 13.0};
}

} // namespace

Mesh build_cogwheel() {
    Mesh mesh;
    const std::uint16_t bright = mesh.add_surface({"Milled steel", {206, 210, 216}, 0, 256});
    const std::uint16_t dark = mesh.add_surface({"Cast iron", {112, 116, 124}, 0, 240});

    FlatFigure rim;
    add_ring(rim, rim_radius, root_radius, rim_steps, 2);
    for (int tooth = 0; tooth < teeth; ++tooth) {
        add_tooth(rim, tooth * steps_per_tooth + 3);
    }
    extrude(mesh, rim, {36.0, 4.0, 2, bright, bright, presented_wheel});

    FlatFigure hub;
    add_ring(hub, bore_radius, hub_radius, hub_steps, 2);
    extrude(mesh, hub, {50.0, 4.5, 2, bright, bright, presented_wheel});

    for (int i = 0; i < spokes; ++i) {
        const Point2 direction = on_circle(1.0, static_cast<double>(i) / spokes);
        const auto turned = [direction](const Point3 &p) {
            return presented_wheel(
                {p.x * direction.x - p.y * direction.y, p.x * direction.y + p.y * direction.x, p.z});
        };
        extrude(mesh, spoke(), {18.0, 3.5, 2, dark, dark, turned});
    }
    return mesh;
}

} // namespace zelvo_data
