// SPDX-License-Identifier: MIT
// Finds the nearest triangle with a tree of boxes.
#include "deviation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

namespace convert {

namespace {

using Triangle = std::array<Vector, 3>;

std::vector<Triangle> triangles_of(const Mesh &mesh) {
    std::vector<Triangle> triangles;
    triangles.reserve(mesh.faces.size());
    for (const Face &face : mesh.faces) {
        const std::span<const std::uint32_t> corners = mesh.corners_of(face);
        triangles.push_back({Vector(mesh.points[corners[0]]), Vector(mesh.points[corners[1]]),
                             Vector(mesh.points[corners[2]])});
    }
    return triangles;
}

Vector nearest_on_line(const Vector &p, const Vector &a, const Vector &b) {
    const Vector along = b - a;
    const double length = dot(along, along);
    return length > 0 ? a + along * std::clamp(dot(p - a, along) / length, 0.0, 1.0) : a;
}

double squared_distance(const Vector &a, const Vector &b) {
    return dot(a - b, a - b);
}

double squared_distance_to(const Vector &p, const Triangle &triangle) {
    const auto &[a, b, c] = triangle;
    const Vector normal = cross(b - a, c - a);
    const bool is_above = dot(cross(b - a, p - a), normal) >= 0 && dot(cross(c - b, p - b), normal) >= 0 &&
                          dot(cross(a - c, p - c), normal) >= 0;
    const double squared_normal = dot(normal, normal);
    if (is_above && squared_normal > 0) {
        const double height = dot(p - a, normal);
        return height * height / squared_normal;
    }
    return std::min({squared_distance(p, nearest_on_line(p, a, b)),
                     squared_distance(p, nearest_on_line(p, b, c)),
                     squared_distance(p, nearest_on_line(p, c, a))});
}

double squared_distance_to(const Vector &p, const Bounds &box) {
    const auto outside = [](double value, double from, double to) {
        return std::max({from - value, value - to, 0.0});
    };
    const Vector away{outside(p.x, box.low.x, box.high.x), outside(p.y, box.low.y, box.high.y),
                      outside(p.z, box.low.z, box.high.z)};
    return dot(away, away);
}

/// A tree whose leaves are a few triangles each. The children of node i are nodes 2 i + 1 and 2 i + 2, and
/// each has half of its triangles.
class Tree {
public:
    explicit Tree(std::vector<Triangle> all) : triangles(std::move(all)) { build(0, 0, triangles.size()); }

    /// The squared distance to the nearest triangle, or to any that is at most `enough` away.
    double squared_distance(const Vector &p, double enough) const {
        double least = std::numeric_limits<double>::max();
        search(0, 0, triangles.size(), p, enough, least);
        return least;
    }

private:
    static constexpr std::size_t leaf_triangles = 4;

    static double middle_of(const Triangle &triangle, int axis) {
        const Vector sum = triangle[0] + triangle[1] + triangle[2];
        return axis == 0 ? sum.x : axis == 1 ? sum.y : sum.z;
    }

    void build(std::size_t node, std::size_t first, std::size_t last) {
        if (boxes.size() <= node) {
            boxes.resize(node + 1);
        }
        Bounds box;
        for (std::size_t i = first; i < last; ++i) {
            for (const Vector &corner : triangles[i]) {
                box.include(corner);
            }
        }
        boxes[node] = box;
        if (last - first <= leaf_triangles) {
            return;
        }
        const Vector size = box.high - box.low;
        const int axis = size.x >= size.y && size.x >= size.z ? 0 : size.y >= size.z ? 1 : 2;
        const auto at = [this](std::size_t i) { return triangles.begin() + static_cast<std::ptrdiff_t>(i); };
        const std::size_t middle = first + (last - first) / 2;
        std::nth_element(at(first), at(middle), at(last), [axis](const Triangle &a, const Triangle &b) {
            return middle_of(a, axis) < middle_of(b, axis);
        });
        build(2 * node + 1, first, middle);
        build(2 * node + 2, middle, last);
    }

    void search(std::size_t node, std::size_t first, std::size_t last, const Vector &p, double enough,
                double &least) const {
        if (least <= enough || squared_distance_to(p, boxes[node]) >= least) {
            return;
        }
        if (last - first <= leaf_triangles) {
            for (std::size_t i = first; i < last; ++i) {
                least = std::min(least, squared_distance_to(p, triangles[i]));
            }
            return;
        }
        const std::size_t middle = first + (last - first) / 2;
        const std::size_t left = 2 * node + 1;
        if (squared_distance_to(p, boxes[left]) <= squared_distance_to(p, boxes[left + 1])) {
            search(left, first, middle, p, enough, least);
            search(left + 1, middle, last, p, enough, least);
        } else {
            search(left + 1, middle, last, p, enough, least);
            search(left, first, middle, p, enough, least);
        }
    }

    std::vector<Triangle> triangles;
    std::vector<Bounds> boxes;
};

/// The greatest squared distance from one mesh to the triangles of another.
double greatest_squared_distance(const Mesh &mesh, const Tree &to) {
    double greatest = 0.0;
    const auto measure = [&](const Vector &p) {
        greatest = std::max(greatest, to.squared_distance(p, greatest));
    };
    for (const Face &face : mesh.faces) {
        const std::span<const std::uint32_t> corners = mesh.corners_of(face);
        Vector sum;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const Vector corner(mesh.points[corners[i]]);
            sum = sum + corner;
            // Two triangles share an edge, in opposite directions.
            if (const std::uint32_t next = corners[(i + 1) % corners.size()]; corners[i] < next) {
                measure((corner + Vector(mesh.points[next])) * 0.5);
            }
        }
        measure(sum * (1.0 / static_cast<double>(corners.size())));
    }
    for (const Vec3 &point : mesh.points) {
        measure(Vector(point));
    }
    return greatest;
}

} // namespace

double deviation(const Mesh &original, const Mesh &reduced) {
    const double greatest = std::max(greatest_squared_distance(original, Tree(triangles_of(reduced))),
                                     greatest_squared_distance(reduced, Tree(triangles_of(original))));
    return std::sqrt(greatest) / bounds_of(original).diagonal();
}

} // namespace convert
