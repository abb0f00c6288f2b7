// SPDX-License-Identifier: MIT
// A geodesic sphere: an icosahedron whose triangles are split four times and pushed out to the sphere.
#include "objects.h"

#include <array>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

namespace zelvo_data {

namespace {

constexpr double radius = 100.0;
constexpr int split_rounds = 4;

using Triangle = std::array<std::size_t, 3>;

struct Shell {
    std::vector<Point3> points;
    std::vector<Triangle> triangles;
};

// The twelve corners are the cyclic permutations of (0, +-1, +-golden ratio). The triangles are the triples
// of mutually nearest corners, which needs no table of 60 indices.
Shell icosahedron() {
    const double golden = (1.0 + std::sqrt(5.0)) / 2.0;
    Shell shell;
    for (const double a : {1.0, -1.0}) {
        for (const double b : {golden, -golden}) {
            shell.points.push_back({0.0, a, b});
            shell.points.push_back({a, b, 0.0});
            shell.points.push_back({b, 0.0, a});
        }
    }
    const auto adjacent = [&shell](std::size_t i, std::size_t j) {
        const Point3 edge = shell.points[i] - shell.points[j];
        return dot(edge, edge) < 5.0; // Neighbours are 2 apart, the next nearest corners more than 3.
    };
    for (std::size_t i = 0; i < 12; ++i) {
        for (std::size_t j = i + 1; j < 12; ++j) {
            for (std::size_t k = j + 1; k < 12; ++k) {
                if (!adjacent(i, j) || !adjacent(j, k) || !adjacent(i, k)) {
                    continue;
                }
                const Point3 &p = shell.points[i];
                const Point3 normal = cross(shell.points[j] - p, shell.points[k] - p);
                shell.triangles.push_back(dot(normal, p) > 0.0 ? Triangle{i, j, k} : Triangle{i, k, j});
            }
        }
    }
    for (Point3 &point : shell.points) {
        point = normalized(point);
    }
    return shell;
}

class EdgeSplitter {
public:
    explicit EdgeSplitter(std::vector<Point3> &points) : points_(points) {}

    // Both triangles at an edge must get the same midpoint, or the smooth shading would show a seam.
    std::size_t midpoint(std::size_t a, std::size_t b) {
        const auto key = a < b ? std::pair(a, b) : std::pair(b, a);
        const auto found = midpoints_.find(key);
        if (found != midpoints_.end()) {
            return found->second;
        }
        points_.push_back(normalized(points_[key.first] + points_[key.second]));
        midpoints_.emplace(key, points_.size() - 1);
        return points_.size() - 1;
    }

private:
    std::vector<Point3> &points_;
    std::map<std::pair<std::size_t, std::size_t>, std::size_t> midpoints_;
};

void split(Shell &shell) {
    EdgeSplitter splitter(shell.points);
    std::vector<Triangle> smaller;
    smaller.reserve(shell.triangles.size() * 4);
    for (const auto &[a, b, c] : shell.triangles) {
        const std::size_t ab = splitter.midpoint(a, b);
        const std::size_t bc = splitter.midpoint(b, c);
        const std::size_t ca = splitter.midpoint(c, a);
        smaller.insert(smaller.end(), {{a, ab, ca}, {ab, b, bc}, {ca, bc, c}, {ab, bc, ca}});
    }
    shell.triangles = std::move(smaller);
}

} // namespace

Mesh build_sphere() {
    Shell shell = icosahedron();
    for (int round = 0; round < split_rounds; ++round) {
        split(shell);
    }
    Mesh mesh;
    const std::uint16_t surface = mesh.add_surface({"Chrome", {208, 212, 220}, 0, 256});
    for (const Point3 &point : shell.points) {
        mesh.add_point(point * radius);
    }
    for (const auto &[a, b, c] : shell.triangles) {
        mesh.add_polygon(
            {static_cast<std::uint16_t>(a), static_cast<std::uint16_t>(b), static_cast<std::uint16_t>(c)},
            surface);
    }
    return mesh;
}

} // namespace zelvo_data
