// SPDX-License-Identifier: MIT
// The measured objects, made in memory in the reader's form.
#pragma once

#include "core/vec3.h"

#include <cstdint>
#include <string>
#include <vector>

/// An object: its points, and its polygon list as in the file (count, indices, surface word).
struct Mesh {
    std::string name;
    std::vector<Vec3> points;
    std::vector<std::uint16_t> polygons;
};

/// A cube of six quads.
Mesh make_cube();

/// An icosahedron whose faces are split in four `cuts` times: 20 * 4^cuts triangles of about equal size.
Mesh make_sphere(int cuts);

/// A torus of `rings` times `sides` quads.
Mesh make_torus(int rings, int sides);

/// A sphere of latitudes and longitudes with 65,535 points and about 130,000 triangles: about the largest
/// object that 16-bit point indices allow.
Mesh make_largest_sphere();

/// Reads a LightWave file with the program's reader. It becomes the current object, not yet prepared.
void read_object_file(const std::string &path);

/// A LightWave file as a mesh with this name.
Mesh mesh_of_file(const std::string &name, const std::string &path);

/// Makes `mesh` the current object and prepares it.
void show_mesh(const Mesh &mesh);

/// `mesh` as the bytes of a LightWave file.
std::vector<unsigned char> file_bytes(const Mesh &mesh);
