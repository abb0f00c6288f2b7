// SPDX-License-Identifier: MIT
// A round cut gem, defined the way a cutter would do it: as a stone from which flat facets are ground.
#include "objects.h"

#include "exact_trig.h"

#include <vector>

namespace zelvo_data {

namespace {

struct Facet {
    Point3 normal;
    double distance; // The stone lies where dot(normal, p) <= distance.
    std::uint16_t surface;
};

using Outline = std::vector<Point3>;

// A facet that faces the given direction around the axis, leans back by `slope` degrees from the girdle
// plane (90 is vertical) and passes through the given radius and height in that direction. `side` is 1 for
// facets above the girdle and -1 below it.
Facet facet_through(double turns, double radius, double height, double slope, double side,
                    std::uint16_t surface) {
    const double outward = sine_of_degrees(slope);
    const double upward = side * cosine_of_degrees(slope);
    const Point3 normal{outward * cosine_of_turns(turns), upward, outward * sine_of_turns(turns)};
    return {normal, outward * radius + upward * height, surface};
}

// Eightfold symmetry. Seen from the crown: an octagonal table, eight five-sided stars, eight six-sided
// kites and pairs of four-sided halves; below the girdle triangular halves, seven-sided kites, and an
// octagonal culet instead of a point.
std::vector<Facet> all_facets(std::uint16_t crown, std::uint16_t girdle, std::uint16_t pavilion) {
    constexpr double table_height = 38.0;
    constexpr double culet_height = -83.0;
    std::vector<Facet> facets;
    facets.push_back({{0.0, 1.0, 0.0}, table_height, crown});
    facets.push_back({{0.0, -1.0, 0.0}, -culet_height, pavilion});
    for (int i = 0; i < 8; ++i) {
        const double kite = i / 8.0;
        const double star = (i + 0.5) / 8.0;
        facets.push_back(facet_through(star, 46.0, table_height, 20.0, 1.0, crown));
        facets.push_back(facet_through(kite, 101.96, 6.5, 34.0, 1.0, crown));
        facets.push_back(facet_through(kite, 100.5, -3.0, 41.0, -1.0, pavilion));
        for (const double offset : {-1.0 / 32.0, 1.0 / 32.0}) {
            facets.push_back(facet_through(kite + offset, 100.0, 3.0, 46.0, 1.0, crown));
            facets.push_back(facet_through(kite + offset, 100.0, 0.0, 90.0, 1.0, girdle));
            facets.push_back(facet_through(kite + offset, 100.0, -3.5, 41.65, -1.0, pavilion));
        }
    }
    return facets;
}

// A square on the facet's plane that is larger than the stone, ordered so that it is seen from outside.
Outline uncut_square(const Facet &facet) {
    const Point3 helper =
        facet.normal.y * facet.normal.y > 0.5 ? Point3{1.0, 0.0, 0.0} : Point3{0.0, 1.0, 0.0};
    const Point3 u = normalized(cross(facet.normal, helper)) * 400.0;
    const Point3 v = cross(facet.normal, u);
    const Point3 centre = facet.normal * facet.distance;
    return {centre - u - v, centre + u - v, centre + u + v, centre - u + v};
}

// Where more than three facets meet, corners are on the cutting plane up to a rounding error. Within the
// tolerance they count as being on it, so that the error has no effect.
constexpr double on_plane = 1.0e-6;

Outline grind(const Outline &outline, const Facet &cutter) {
    Outline result;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const Point3 &a = outline[i];
        const Point3 &b = outline[(i + 1) % outline.size()];
        const double above_a = dot(cutter.normal, a) - cutter.distance;
        const double above_b = dot(cutter.normal, b) - cutter.distance;
        if (above_a <= on_plane) {
            result.push_back(a);
        }
        if ((above_a < -on_plane && above_b > on_plane) || (above_a > on_plane && above_b < -on_plane)) {
            result.push_back(a + (b - a) * (above_a / (above_a - above_b)));
        }
    }
    return result;
}

// Each facet computes its own corners, so those of neighbours differ by rounding errors. All facets use the
// first of them, which closes the gaps.
class CornerWelder {
public:
    Outline welded(const Outline &outline) {
        Outline result;
        for (const Point3 &corner : outline) {
            const Point3 place = known_place(corner);
            if (result.empty() || (!together(result.back(), place) && !together(result.front(), place))) {
                result.push_back(place);
            }
        }
        return result;
    }

private:
    static bool together(const Point3 &a, const Point3 &b) { return dot(a - b, a - b) < 1.0e-6; }

    Point3 known_place(const Point3 &corner) {
        for (const Point3 &known : known_) {
            if (together(known, corner)) {
                return known;
            }
        }
        known_.push_back(corner);
        return corner;
    }

    std::vector<Point3> known_;
};

// Tips the stone a little to the side and towards the viewer, so that the table and the whole crown show
// before the first rotation. (60/61, 11/61) and (0.8, 0.6) are exact cosines and sines of one angle each.
Point3 presented_stone(const Point3 &p) {
    const Point3 tipped{(60.0 * p.x + 11.0 * p.y) / 61.0, (60.0 * p.y - 11.0 * p.x) / 61.0, p.z};
    return {tipped.x, 0.8 * tipped.y + 0.6 * tipped.z, 0.8 * tipped.z - 0.6 * tipped.y};
}

} // namespace

Mesh build_cut_gem() {
    Mesh mesh;
    const std::uint16_t crown = mesh.add_surface({"Crown", {190, 226, 255}, 16, 240});
    const std::uint16_t girdle = mesh.add_surface({"Girdle", {240, 248, 255}, 0, 256});
    const std::uint16_t pavilion = mesh.add_surface({"Pavilion", {120, 176, 236}, 8, 248});
    const std::vector<Facet> facets = all_facets(crown, girdle, pavilion);
    CornerWelder welder;
    for (std::size_t own = 0; own < facets.size(); ++own) {
        Outline outline = uncut_square(facets[own]);
        for (std::size_t other = 0; other < facets.size(); ++other) {
            if (other != own) {
                outline = grind(outline, facets[other]);
            }
        }
        // Facets do not share points, because smooth shading would round the edges off.
        std::vector<std::uint16_t> corners;
        for (const Point3 &corner : welder.welded(outline)) {
            corners.push_back(mesh.add_point(presented_stone(corner)));
        }
        mesh.add_polygon(corners, facets[own].surface);
    }
    return mesh;
}

} // namespace zelvo_data
