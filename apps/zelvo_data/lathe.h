// SPDX-License-Identifier: MIT
// Builds solids of revolution from a profile that is described curve by curve.
#pragma once

#include "mesh.h"

#include <vector>

namespace zelvo_data {

// A smoothly shaded part of the profile. The x of a point is its distance from the axis, y its height. The
// whole profile runs from the top of the figure to the bottom.
struct ProfileStretch {
    std::vector<Point2> points;
    std::uint16_t surface;
};

// Angles are in degrees, counted from straight up and clockwise, so 90 points away from the axis.
std::vector<Point2> profile_arc(Point2 centre, double radius, double from_degrees, double to_degrees,
                                int segments);

std::vector<Point2> profile_line(Point2 from, Point2 to, int segments);

// A curve from `from` to `to` that leaves and arrives in the directions of the two handles.
std::vector<Point2> profile_bow(Point2 from, Point2 from_handle, Point2 to_handle, Point2 to, int segments);

// Appends `more` to `points` without its first point, which equals the last one of `points`.
void continue_profile(std::vector<Point2> &points, const std::vector<Point2> &more);

// The parts do not share points with each other, so there is a crease where two of them meet.
void turn_on_lathe(Mesh &mesh, const std::vector<ProfileStretch> &profile, int segments);

} // namespace zelvo_data
