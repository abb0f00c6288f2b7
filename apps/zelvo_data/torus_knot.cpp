// SPDX-License-Identifier: MIT
// A trefoil knot: a round tube along a curve that winds twice around a torus and three times through it.
#include "objects.h"

#include "exact_trig.h"

#include <vector>

namespace zelvo_data {

namespace {

constexpr int k_rings = 300;
constexpr int k_ring_points = 24;
constexpr int k_turns_around_axis = 2;
constexpr int k_turns_through_hole = 3;
// The tightest bend of the curve has a radius of 44 and its strands stay 53 apart, so the tube has clearance.
constexpr double k_torus_radius = 60.0;
constexpr double k_winding_radius = 27.0;
constexpr double k_tube_radius = 18.5;

struct CurveFrame {
    Point3 centre;
    Point3 outward; // Normal of the torus under the curve.
    Point3 sideways;
};

// The torus normal is perpendicular to any curve on the torus and returns to itself after the last ring.
// Using it as the reference direction of the tube gives a frame that closes without any seam.
CurveFrame frame_at(double turns) {
    const double around_cos = cosine_of_turns(k_turns_around_axis * turns);
    const double around_sin = sine_of_turns(k_turns_around_axis * turns);
    const double through_cos = cosine_of_turns(k_turns_through_hole * turns);
    const double through_sin = sine_of_turns(k_turns_through_hole * turns);
    const double distance = k_torus_radius + k_winding_radius * through_cos;

    const Point3 outward{through_cos * around_cos, through_cos * around_sin, through_sin};
    const Point3 along_axis_turn{-around_sin, around_cos, 0.0};
    const Point3 along_hole_turn{-through_sin * around_cos, -through_sin * around_sin, through_cos};
    const Point3 tangent = normalized(along_axis_turn * (k_turns_around_axis * distance) +
                                      along_hole_turn * (k_turns_through_hole * k_winding_radius));
    return {{distance * around_cos, distance * around_sin, k_winding_radius * through_sin},
            outward,
            cross(tangent, outward)};
}

} // namespace

Mesh build_torus_knot() {
    Mesh mesh;
    const std::uint16_t surface = mesh.add_surface({"Polished steel", {200, 205, 214}, 0, 256});
    for (int ring = 0; ring < k_rings; ++ring) {
        const CurveFrame frame = frame_at(static_cast<double>(ring) / k_rings);
        for (int step = 0; step < k_ring_points; ++step) {
            const double turns = static_cast<double>(step) / k_ring_points;
            mesh.add_point(frame.centre + frame.outward * (k_tube_radius * cosine_of_turns(turns)) +
                           frame.sideways * (k_tube_radius * sine_of_turns(turns)));
        }
    }
    const auto index = [](int ring, int step) {
        return static_cast<std::uint16_t>((ring % k_rings) * k_ring_points + step % k_ring_points);
    };
    for (int ring = 0; ring < k_rings; ++ring) {
        for (int step = 0; step < k_ring_points; ++step) {
            mesh.add_polygon(
                {index(ring, step), index(ring, step + 1), index(ring + 1, step + 1), index(ring + 1, step)},
                surface);
        }
    }
    return mesh;
}

} // namespace zelvo_data
