// SPDX-License-Identifier: MIT
// Finds points in the same place by a hash table.
#include "cleaning.h"

#include "shared/place_hash.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace convert {

namespace {

struct SamePlace {
    bool operator()(const Vec3 &a, const Vec3 &b) const { return a.x == b.x && a.y == b.y && a.z == b.z; }
};

struct PlaceHash {
    std::size_t operator()(const Vec3 &point) const { return static_cast<std::size_t>(place_hash(point)); }
};

bool is_finite(const Vec3 &point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

/// Drops corners that repeat the one before them. The last one comes before the first.
void drop_repeated(std::vector<std::uint32_t> &corners) {
    corners.erase(std::unique(corners.begin(), corners.end()), corners.end());
    while (corners.size() > 1 && corners.front() == corners.back()) {
        corners.pop_back();
    }
}

/// Whether a face is a line or a point, within the precision of its coordinates.
bool is_flat(const Mesh &mesh, std::span<const std::uint32_t> corners) {
    double longest = 0.0;
    for (const std::uint32_t corner : corners) {
        const Vector side = Vector(mesh.points[corner]) - Vector(mesh.points[corners[0]]);
        longest = std::max(longest, dot(side, side));
    }
    constexpr double least_part = 1e-9;
    const Vector area = area_vector(mesh, corners);
    return !(std::sqrt(dot(area, area)) > least_part * longest);
}

/// Drops the points that no face uses, and returns how many these are.
std::size_t drop_unused(Mesh &mesh) {
    constexpr std::uint32_t unused = UINT32_MAX;
    std::vector<std::uint32_t> number(mesh.points.size(), unused);
    for (const std::uint32_t corner : mesh.corners) {
        number[corner] = 0;
    }
    std::uint32_t used = 0;
    for (std::size_t i = 0; i < mesh.points.size(); ++i) {
        if (number[i] != unused) {
            mesh.points[used] = mesh.points[i];
            number[i] = used++;
        }
    }
    const std::size_t dropped = mesh.points.size() - used;
    mesh.points.resize(used);
    for (std::uint32_t &corner : mesh.corners) {
        corner = number[corner];
    }
    return dropped;
}

/// For each point the first one in the same place.
std::vector<std::uint32_t> first_in_place(const std::vector<Vec3> &points) {
    std::unordered_map<Vec3, std::uint32_t, PlaceHash, SamePlace> firsts(points.size());
    std::vector<std::uint32_t> first(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        first[i] = firsts.emplace(points[i], static_cast<std::uint32_t>(i)).first->second;
    }
    return first;
}

} // namespace

Vector area_vector(const Mesh &mesh, std::span<const std::uint32_t> corners) {
    const Vector origin(mesh.points[corners[0]]);
    Vector sum;
    for (std::size_t i = 2; i < corners.size(); ++i) {
        sum = sum +
              cross(Vector(mesh.points[corners[i - 1]]) - origin, Vector(mesh.points[corners[i]]) - origin);
    }
    return sum;
}

Cleaned clean(Mesh &mesh) {
    Cleaned cleaned;
    const std::vector<std::uint32_t> first = first_in_place(mesh.points);
    Mesh kept;
    std::vector<std::uint32_t> corners;
    for (const Face &face : mesh.faces) {
        const std::span<const std::uint32_t> old = mesh.corners_of(face);
        if (!std::ranges::all_of(old, [&mesh](std::uint32_t i) { return is_finite(mesh.points[i]); })) {
            ++cleaned.endless_faces;
            continue;
        }
        corners.assign(old.begin(), old.end());
        for (std::uint32_t &corner : corners) {
            corner = first[corner];
        }
        drop_repeated(corners);
        if (corners.size() < 3 || is_flat(mesh, corners)) {
            ++cleaned.flat_faces;
            continue;
        }
        kept.add_face(corners, face.surface);
    }
    mesh.faces = std::move(kept.faces);
    mesh.corners = std::move(kept.corners);
    for (std::size_t i = 0; i < first.size(); ++i) {
        cleaned.welded_points += first[i] != i ? 1 : 0;
    }
    cleaned.unused_points = drop_unused(mesh) - cleaned.welded_points;
    return cleaned;
}

} // namespace convert
