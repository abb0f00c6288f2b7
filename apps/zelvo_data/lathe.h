// SPDX-License-Identifier: MIT
// Builds solids of revolution from a profile that is described curve by curve.
#pragma once

#include "mesh.h"

#include <vector>

namespace zelvo_data {

// A stretch of the profile that is shaded smoothly. The x of a point is its distance from the axis, y its
// height. The profile as a whole runs from the top of the figure to the bottom.
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

// Appends `more` to `points`, leaving out its first point, which is where `points` ends.
void continue_profile(std::vector<Point2> &points, const std::vector<Point2> &more);

// Stretches do not share points with each other, hence a crease remains wherever two of them meet.
void turn_on_lathe(Mesh &mesh, const std::vector<ProfileStretch> &profile, int segments);

} // namespace zelvo_data
