// SPDX-License-Identifier: MIT
// A chess pawn turned on the lathe: ball, collar, flared body, bead, stepped base and a felt bottom.
#include "objects.h"

#include "lathe.h"

#include <utility>
#include <vector>

namespace zelvo_data {

namespace {

constexpr int lathe_segments = 44;

// A half-round moulding that starts and ends at the same distance from the axis.
std::vector<Point2> bead(Point2 top, double height, double bulge) {
    const double reach = top.x + bulge * 4.0 / 3.0;
    const Point2 bottom{top.x, top.y - height};
    return profile_bow(top, {reach, top.y}, {reach, bottom.y}, bottom, 10);
}

std::vector<ProfileStretch> pawn_profile(std::uint16_t wood, std::uint16_t brass, std::uint16_t felt) {
    std::vector<ProfileStretch> profile;

    profile.push_back({profile_arc({0.0, 126.0}, 25.0, 0.0, 150.0, 14), wood});

    // The collar is a disc with a round rim; its upper side dips towards the ball like a saucer.
    std::vector<Point2> collar =
        profile_bow(profile.back().points.back(), {16.0, 101.5}, {23.0, 101.5}, {28.0, 101.5}, 4);
    continue_profile(collar, profile_arc({28.0, 97.0}, 4.5, 0.0, 180.0, 7));
    continue_profile(collar, profile_bow({28.0, 92.5}, {23.0, 92.5}, {19.0, 91.5}, {16.5, 87.0}, 4));
    profile.push_back({std::move(collar), brass});

    profile.push_back({profile_bow({16.5, 87.0}, {17.0, 62.0}, {23.0, 47.0}, {37.0, 36.5}, 14), wood});
    profile.push_back({bead({37.0, 36.5}, 10.5, 6.0), brass});

    std::vector<Point2> base = profile_bow({37.0, 26.0}, {43.0, 23.0}, {57.0, 26.0}, {59.0, 13.0}, 9);
    continue_profile(base, profile_line({59.0, 13.0}, {59.5, 6.5}, 2));
    profile.push_back({std::move(base), wood});
    profile.push_back({profile_bow({59.5, 6.5}, {63.5, 6.5}, {63.5, 0.0}, {59.5, 0.0}, 8), brass});
    profile.push_back({profile_line({59.5, 0.0}, {0.0, 0.0}, 4), felt});
    return profile;
}

} // namespace

Mesh build_chess_pawn() {
    Mesh mesh;
    const std::uint16_t wood = mesh.add_surface({"Pear wood", {186, 120, 66}, 0, 240});
    const std::uint16_t brass = mesh.add_surface({"Brass", {226, 190, 96}, 0, 256});
    const std::uint16_t felt = mesh.add_surface({"Green felt", {34, 96, 52}, 0, 200});
    turn_on_lathe(mesh, pawn_profile(wood, brass, felt), lathe_segments);
    return mesh;
}

void add_chess_pawn_notes(LwobObject &object) {
    object.notes_before_points.push_back({"NAME", "Pawn, turned from pear wood"});
    object.notes_after_polygons.push_back({"NOTE", "Profile in seven stretches; the top of the ball is up."});
}

} // namespace zelvo_data
