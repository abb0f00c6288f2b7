// SPDX-License-Identifier: MIT
// Makes the cube, the spheres and the torus, and puts them into the program's model arrays.
#include "meshes.h"

#include "object/lwo_reader.h"
#include "object/model.h"
#include "pipeline/preparation.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <numbers>
#include <utility>

namespace {

void add_polygon(Mesh &mesh, std::initializer_list<std::size_t> corners) {
    mesh.polygons.push_back(static_cast<std::uint16_t>(corners.size()));
    for (const std::size_t corner : corners) {
        mesh.polygons.push_back(static_cast<std::uint16_t>(corner));
    }
    mesh.polygons.push_back(1);
}

Vec3 on_unit_sphere(double x, double y, double z) {
    const double length = std::sqrt(x * x + y * y + z * z);
    return {static_cast<float>(x / length), static_cast<float>(y / length), static_cast<float>(z / length)};
}

using Triangle = std::array<std::size_t, 3>;

/// The point of the sphere between two others, made once for the two triangles that share the edge.
std::size_t edge_midpoint(Mesh &mesh, std::map<std::pair<std::size_t, std::size_t>, std::size_t> &midpoints,
                          std::size_t a, std::size_t b) {
    const auto [entry, is_new] = midpoints.try_emplace(std::minmax(a, b), mesh.points.size());
    if (is_new) {
        const Vec3 &p = mesh.points[a];
        const Vec3 &q = mesh.points[b];
        mesh.points.push_back(on_unit_sphere(double{p.x} + q.x, double{p.y} + q.y, double{p.z} + q.z));
    }
    return entry->second;
}

void put_32(std::vector<unsigned char> &bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<unsigned char>(value >> shift));
    }
}

void put_name(std::vector<unsigned char> &bytes, const char *name) {
    for (int i = 0; i < 4; ++i) {
        bytes.push_back(static_cast<unsigned char>(name[i]));
    }
}

} // namespace

Mesh make_cube() {
    Mesh mesh{"cube", {}, {}};
    for (int i = 0; i < 8; ++i) {
        mesh.points.push_back(
            {(i & 1) != 0 ? 1.0F : -1.0F, (i & 2) != 0 ? 1.0F : -1.0F, (i & 4) != 0 ? 1.0F : -1.0F});
    }
    add_polygon(mesh, {0, 2, 3, 1});
    add_polygon(mesh, {4, 5, 7, 6});
    add_polygon(mesh, {0, 1, 5, 4});
    add_polygon(mesh, {2, 6, 7, 3});
    add_polygon(mesh, {0, 4, 6, 2});
    add_polygon(mesh, {1, 3, 7, 5});
    return mesh;
}

Mesh make_sphere(int cuts) {
    Mesh mesh;
    const double golden = std::numbers::phi;
    for (const double a : {-1.0, 1.0}) {
        for (const double b : {-golden, golden}) {
            mesh.points.push_back(on_unit_sphere(0, a, b));
            mesh.points.push_back(on_unit_sphere(a, b, 0));
            mesh.points.push_back(on_unit_sphere(b, 0, a));
        }
    }
    // The icosahedron's faces are the triples of points that are one edge apart, facing outwards.
    const auto is_edge = [&mesh](std::size_t i, std::size_t j) {
        const Vec3 &p = mesh.points[i];
        const Vec3 &q = mesh.points[j];
        return p.x * q.x + p.y * q.y + p.z * q.z > 0.4F;
    };
    std::vector<Triangle> faces;
    for (std::size_t i = 0; i < 12; ++i) {
        for (std::size_t j = i + 1; j < 12; ++j) {
            for (std::size_t k = j + 1; k < 12; ++k) {
                if (is_edge(i, j) && is_edge(j, k) && is_edge(i, k)) {
                    const Vec3 n = face_normal(mesh.points[i], mesh.points[j], mesh.points[k]);
                    const Vec3 &p = mesh.points[i];
                    const bool outwards = n.x * p.x + n.y * p.y + n.z * p.z > 0.0F;
                    faces.push_back(outwards ? Triangle{i, j, k} : Triangle{i, k, j});
                }
            }
        }
    }
    for (int cut = 0; cut < cuts; ++cut) {
        std::map<std::pair<std::size_t, std::size_t>, std::size_t> midpoints;
        std::vector<Triangle> smaller;
        smaller.reserve(faces.size() * 4);
        for (const auto &[a, b, c] : faces) {
            const std::size_t ab = edge_midpoint(mesh, midpoints, a, b);
            const std::size_t bc = edge_midpoint(mesh, midpoints, b, c);
            const std::size_t ca = edge_midpoint(mesh, midpoints, c, a);
            smaller.insert(smaller.end(), {{a, ab, ca}, {ab, b, bc}, {ca, bc, c}, {ab, bc, ca}});
        }
        faces = std::move(smaller);
    }
    for (const auto &[a, b, c] : faces) {
        add_polygon(mesh, {a, b, c});
    }
    mesh.name = "sphere " + std::to_string(faces.size());
    return mesh;
}

Mesh make_torus(int rings, int sides) {
    Mesh mesh{"torus " + std::to_string(rings * sides) + " quads", {}, {}};
    for (int ring = 0; ring < rings; ++ring) {
        const double u = 2.0 * std::numbers::pi * ring / rings;
        for (int side = 0; side < sides; ++side) {
            const double v = 2.0 * std::numbers::pi * side / sides;
            const double r = 1.0 + 0.4 * std::cos(v);
            mesh.points.push_back({static_cast<float>(r * std::cos(u)), static_cast<float>(0.4 * std::sin(v)),
                                   static_cast<float>(r * std::sin(u))});
        }
    }
    const auto point = [rings, sides](int ring, int side) {
        return static_cast<std::size_t>(ring % rings * sides + side % sides);
    };
    for (int ring = 0; ring < rings; ++ring) {
        for (int side = 0; side < sides; ++side) {
            add_polygon(mesh, {point(ring, side), point(ring + 1, side), point(ring + 1, side + 1),
                               point(ring, side + 1)});
        }
    }
    return mesh;
}

Mesh make_largest_sphere() {
    Mesh mesh{"largest sphere", {}, {}};
    constexpr std::size_t rows = 254;
    constexpr std::size_t columns = 258;
    for (std::size_t row = 0; row <= rows; ++row) {
        for (std::size_t column = 0; column < columns && mesh.points.size() < 65535; ++column) {
            const double u = std::numbers::pi * static_cast<double>(row) / rows;
            const double v = 2.0 * std::numbers::pi * static_cast<double>(column) / columns;
            mesh.points.push_back({static_cast<float>(std::sin(u) * std::cos(v)),
                                   static_cast<float>(std::cos(u)),
                                   static_cast<float>(std::sin(u) * std::sin(v))});
        }
    }
    for (std::size_t row = 0; row + 2 <= rows; ++row) {
        for (std::size_t column = 0; column < columns; ++column) {
            const std::size_t next = (column + 1) % columns;
            const std::size_t a = row * columns + column;
            const std::size_t b = row * columns + next;
            add_polygon(mesh, {a, b, b + columns});
            add_polygon(mesh, {a, b + columns, a + columns});
        }
    }
    return mesh;
}

void show_mesh(const Mesh &mesh) {
    point_chunk = allocate_array<Vec3>(mesh.points.size() + 1);
    polygon_chunk = allocate_array<std::uint16_t>(mesh.polygons.size() + 1);
    point_chunk_bytes = static_cast<std::int32_t>(mesh.points.size() * sizeof(Vec3));
    polygon_chunk_bytes = static_cast<std::int32_t>(mesh.polygons.size() * 2);
    std::copy(mesh.points.begin(), mesh.points.end(), point_chunk.get());
    std::copy(mesh.polygons.begin(), mesh.polygons.end(), polygon_chunk.get());
    lwopoints2 = allocate_array<Vec3>(mesh.points.size() + 1);
    lwopoints3 = allocate_array<Vec3>(mesh.points.size() + 1);
    lwonormals2 = allocate_array<Vec3>(mesh.points.size() + 1);
    lwonormals3 = allocate_array<Vec3>(mesh.points.size() + 1);
    lwofis = allocate_array<float>(mesh.points.size() + 1);
    prepare_object();
}

void read_object_file(const std::string &path) {
    std::FILE *file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        std::perror(path.c_str());
        std::exit(1);
    }
    read_object(file);
}

Mesh mesh_of_file(const std::string &name, const std::string &path) {
    read_object_file(path);
    return {name, std::vector<Vec3>(point_chunk.get(), point_chunk.get() + point_count()),
            std::vector<std::uint16_t>(polygon_chunk.get(), polygon_chunk.get() + polygon_word_count())};
}

std::vector<unsigned char> file_bytes(const Mesh &mesh) {
    const std::size_t point_bytes = mesh.points.size() * sizeof(Vec3);
    const std::size_t polygon_bytes = mesh.polygons.size() * 2;
    std::vector<unsigned char> bytes;
    put_name(bytes, "FORM");
    put_32(bytes, static_cast<std::uint32_t>(4 + 8 + point_bytes + 8 + polygon_bytes));
    put_name(bytes, "LWOB");
    put_name(bytes, "PNTS");
    put_32(bytes, static_cast<std::uint32_t>(point_bytes));
    for (const Vec3 &p : mesh.points) {
        for (const float coordinate : {p.x, p.y, p.z}) {
            put_32(bytes, std::bit_cast<std::uint32_t>(coordinate));
        }
    }
    put_name(bytes, "POLS");
    put_32(bytes, static_cast<std::uint32_t>(polygon_bytes));
    for (const std::uint16_t word : mesh.polygons) {
        bytes.push_back(static_cast<unsigned char>(word >> 8));
        bytes.push_back(static_cast<unsigned char>(word & 0xFF));
    }
    return bytes;
}
