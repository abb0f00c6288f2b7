// SPDX-License-Identifier: MIT
// A trefoil knot: a round tube along a curve that winds twice around a torus and three times through it.
#include "objects.h"

#include "exact_trig.h"

#include <vector>

namespace zelvo_data {

namespace {

constexpr int rings = 300;
constexpr int ring_points = 24;
constexpr int turns_around_axis = 2;
constexpr int turns_through_hole = 3;
// The tightest bend of the curve has a radius of 44 and its strands stay 53 apart, so the tube has clearance.
constexpr double torus_radius = 60.0;
constexpr double winding_radius = 27.0;
constexpr double tube_radius = 18.5;

struct CurveFrame {
    Point3 centre;
    Point3 outward; // Normal of the torus under the curve.
    Point3 sideways;
};

// The torus normal is perpendicular to any curve on the torus and returns to itself after the last ring.
// Using it as the reference direction of the tube gives a frame that closes without any seam.
CurveFrame frame_at(double turns) {
    const double around_cos = cosine_of_turns(turns_around_axis * turns);
    const double around_sin = sine_of_turns(turns_around_axis * turns);
    const double through_cos = cosine_of_turns(turns_through_hole * turns);
    const double through_sin = sine_of_turns(turns_through_hole * turns);
    const double distance = torus_radius + winding_radius * through_cos;

    const Point3 outward{through_cos * around_cos, through_cos * around_sin, through_sin};
    const Point3 along_axis_turn{-around_sin, around_cos, 0.0};
    const Point3 along_hole_turn{-through_sin * around_cos, -through_sin * around_sin, through_cos};
    const Point3 tangent = normalized(along_axis_turn * (turns_around_axis * distance) +
                                      along_hole_turn * (turns_through_hole * winding_radius));
    return {{distance * around_cos, distance * around_sin, winding_radius * through_sin},
            outward,
            cross(tangent, outward)};
}

} // namespace

Mesh build_torus_knot() {
    Mesh mesh;
    const std::uint16_t surface = mesh.add_surface({"Polished steel", {200, 205, 214}, 0, 256});
    for (int ring = 0; ring < rings; ++ring) {
        const CurveFrame frame = frame_at(static_cast<double>(ring) / rings);
        for (int step = 0; step < ring_points; ++step) {
            const double turns = static_cast<double>(step) / ring_points;
            mesh.add_point(frame.centre + frame.outward * (tube_radius * cosine_of_turns(turns)) +
                           frame.sideways * (tube_radius * sine_of_turns(turns)));
        }
    }
    const auto index = [](int ring, int step) {
        return static_cast<std::uint16_t>((ring % rings) * ring_points + step % ring_points);
    };
    for (int ring = 0; ring < rings; ++ring) {
        for (int step = 0; step < ring_points; ++step) {
            mesh.add_polygon(
                {index(ring, step), index(ring, step + 1), index(ring + 1, step + 1), index(ring + 1, step)},
                surface);
        }
    }
    return mesh;
}

} // namespace zelvo_data
