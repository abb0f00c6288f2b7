// SPDX-License-Identifier: MIT
// Searches for the number of triangles to ask meshoptimizer for.
#include "reduction.h"

#include "cleaning.h"

#include <algorithm>
#include <map>
#include <meshoptimizer.h>
#include <unordered_map>

namespace convert {

namespace {

/// The mesh in meshoptimizer's form. A point that several surfaces use is there once for each of them. So
/// each point belongs to one surface, and the border between surfaces is kept.
struct Indexed {
    std::vector<Vec3> points;
    std::vector<std::uint32_t> surfaces;
    std::vector<unsigned int> triangles;
};

Indexed index(const Mesh &mesh) {
    Indexed indexed;
    std::unordered_map<std::uint64_t, unsigned int> numbers;
    for (const Face &face : mesh.faces) {
        for (const std::uint32_t corner : mesh.corners_of(face)) {
            const std::uint64_t key = std::uint64_t{corner} << 32 | face.surface;
            const auto [entry, is_new] =
                numbers.emplace(key, static_cast<unsigned int>(indexed.points.size()));
            if (is_new) {
                indexed.points.push_back(mesh.points[corner]);
                indexed.surfaces.push_back(face.surface);
            }
            indexed.triangles.push_back(entry->second);
        }
    }
    return indexed;
}

Mesh mesh_of(const Indexed &indexed, const std::vector<unsigned int> &triangles,
             const std::vector<LwobSurface> &surfaces) {
    Mesh mesh;
    mesh.points = indexed.points;
    mesh.surfaces = surfaces;
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3) {
        mesh.add_face(std::span(triangles).subspan(i, 3), indexed.surfaces[triangles[i]]);
    }
    clean(mesh);
    return mesh;
}

/// Removes edges, or merges what is close, until about this many triangles are left.
std::vector<unsigned int> simplified(const Indexed &indexed, std::size_t triangles, bool keeps_connections) {
    // No limit on the error: the number is what counts.
    constexpr float any_error = 1e9F;
    std::vector<unsigned int> result(indexed.triangles.size());
    const float *coordinates = &indexed.points[0].x;
    const std::size_t count =
        keeps_connections
            ? meshopt_simplify(result.data(), indexed.triangles.data(), indexed.triangles.size(), coordinates,
                               indexed.points.size(), sizeof(Vec3), triangles * 3, any_error, 0, nullptr)
            : meshopt_simplifySloppy(result.data(), indexed.triangles.data(), indexed.triangles.size(),
                                     coordinates, indexed.points.size(), sizeof(Vec3), triangles * 3,
                                     any_error, nullptr);
    result.resize(count);
    return result;
}

/// Searches for the largest number of triangles whose mesh fits. Points and triangles decrease together, but
/// not exactly.
bool reduce_by(const Indexed &indexed, bool keeps_connections, std::size_t most_points,
               std::size_t most_triangles, Mesh &mesh) {
    constexpr int most_tries = 6;
    // The part of what was asked for that is close enough, and the part that each try aims at.
    constexpr double enough = 0.98;
    constexpr double aim = 0.995;
    // Closed surfaces have twice as many triangles as points. No try may ask for more triangles than there
    // are.
    const double all = static_cast<double>(indexed.triangles.size()) / 3.0;
    double wanted = static_cast<double>(std::min(most_triangles, 2 * most_points)) * aim;
    Mesh best;
    for (int i = 0; i < most_tries; ++i) {
        wanted = std::min(wanted, all * aim);
        Mesh candidate = mesh_of(
            indexed, simplified(indexed, static_cast<std::size_t>(wanted), keeps_connections), mesh.surfaces);
        const double filled =
            std::max(static_cast<double>(candidate.points.size()) / static_cast<double>(most_points),
                     static_cast<double>(candidate.faces.size()) / static_cast<double>(most_triangles));
        // The mesh may be connected such that it cannot become smaller.
        const bool is_stuck = static_cast<double>(candidate.faces.size()) > 1.5 * wanted;
        if (filled <= 1.0 && candidate.faces.size() > best.faces.size()) {
            best = std::move(candidate);
        }
        if ((filled >= enough && filled <= 1.0) || is_stuck) {
            break;
        }
        // If the mesh was reduced too far, nothing is left of it.
        wanted = filled > 0.0 ? wanted * aim / filled : wanted * 2.0;
    }
    if (best.faces.empty()) {
        return false;
    }
    mesh = std::move(best);
    return true;
}

} // namespace

bool reduce(Mesh &mesh, std::size_t most_points, std::size_t most_triangles) {
    const Indexed indexed = index(mesh);
    return reduce_by(indexed, true, most_points, most_triangles, mesh) ||
           reduce_by(indexed, false, most_points, most_triangles, mesh);
}

} // namespace convert
