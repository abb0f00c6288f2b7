// SPDX-License-Identifier: MIT
// Profile curves and their revolution around the vertical axis.
#include "lathe.h"

#include "exact_trig.h"

namespace zelvo_data {

std::vector<Point2> profile_arc(Point2 centre, double radius, double from_degrees, double to_degrees,
                                int segments) {
    std::vector<Point2> points;
    for (int i = 0; i <= segments; ++i) {
        const double degrees = from_degrees + (to_degrees - from_degrees) * i / segments;
        points.push_back(
            {centre.x + radius * sine_of_degrees(degrees), centre.y + radius * cosine_of_degrees(degrees)});
    }
    return points;
}

std::vector<Point2> profile_line(Point2 from, Point2 to, int segments) {
    std::vector<Point2> points;
    for (int i = 0; i <= segments; ++i) {
        const double t = static_cast<double>(i) / segments;
        points.push_back({from.x + (to.x - from.x) * t, from.y + (to.y - from.y) * t});
    }
    return points;
}

std::vector<Point2> profile_bow(Point2 from, Point2 from_handle, Point2 to_handle, Point2 to, int segments) {
    std::vector<Point2> points;
    for (int i = 0; i <= segments; ++i) {
        const double t = static_cast<double>(i) / segments;
        const double s = 1.0 - t;
        const double w0 = s * s * s;
        const double w1 = 3.0 * s * s * t;
        const double w2 = 3.0 * s * t * t;
        const double w3 = t * t * t;
        points.push_back({w0 * from.x + w1 * from_handle.x + w2 * to_handle.x + w3 * to.x,
                          w0 * from.y + w1 * from_handle.y + w2 * to_handle.y + w3 * to.y});
    }
    return points;
}

void continue_profile(std::vector<Point2> &points, const std::vector<Point2> &more) {
    points.insert(points.end(), more.begin() + 1, more.end());
}

namespace {

// A profile point on the axis becomes one point instead of a ring, so that the tip of the figure has a single
// normal.
constexpr double axis_distance = 1.0e-6;

std::vector<std::uint16_t> add_ring(Mesh &mesh, Point2 profile_point, int segments) {
    if (profile_point.x < axis_distance) {
        const std::uint16_t tip = mesh.add_point({0.0, profile_point.y, 0.0});
        return std::vector<std::uint16_t>(static_cast<std::size_t>(segments), tip);
    }
    std::vector<std::uint16_t> ring;
    for (int i = 0; i < segments; ++i) {
        const double turns = static_cast<double>(i) / segments;
        ring.push_back(mesh.add_point({profile_point.x * cosine_of_turns(turns), profile_point.y,
                                       profile_point.x * sine_of_turns(turns)}));
    }
    return ring;
}

} // namespace

void turn_on_lathe(Mesh &mesh, const std::vector<ProfileStretch> &profile, int segments) {
    for (const ProfileStretch &stretch : profile) {
        std::vector<std::uint16_t> upper = add_ring(mesh, stretch.points.front(), segments);
        for (std::size_t row = 1; row < stretch.points.size(); ++row) {
            const std::vector<std::uint16_t> lower = add_ring(mesh, stretch.points[row], segments);
            for (std::size_t i = 0; i < upper.size(); ++i) {
                const std::size_t next = (i + 1) % upper.size();
                mesh.add_polygon({upper[i], upper[next], lower[next], lower[i]}, stretch.surface);
            }
            upper = lower;
        }
    }
}

} // namespace zelvo_data
