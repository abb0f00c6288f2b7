// SPDX-License-Identifier: MIT
// Uses the viewer's reader. The version of assimp in Debian 12 refuses all files of form LWOB.
#include "object_import.h"

#include "core/fatal_exit.h"
#include "messages.h"
#include "object/lwo_reader.h"
#include "object/model.h"
#include "object/polygon_list.h"
#include "object_chunks.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

// In place of the viewer's own, which releases a display and prints to standard output.
void fatal_exit(const char *text) {
    convert::refuse(std::string("the viewer refuses it: ") + (text != nullptr ? text : "ended"));
}

namespace convert {

void read_as_the_viewer(const std::string &path) {
    std::FILE *file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        refuse("cannot be opened");
    }
    read_object(file);
}

Model model_of_object(const std::string &path) {
    Model model;
    Mesh &mesh = model.mesh;
    model.format = "LightWave Object, form LWOB";
    mesh.surfaces = surfaces_in(chunks_of(path));
    if (mesh.surfaces.empty()) {
        mesh.surfaces.push_back({.name = "Default", .colour = default_colour});
    }
    read_as_the_viewer(path);
    mesh.points.assign(point_chunk.get(), point_chunk.get() + points_to_process());
    std::vector<std::uint32_t> corners;
    for_each_polygon([&](const Polygon &polygon) {
        if (polygon.vertices < 3) {
            model.single_points += polygon.vertices == 1 ? 1 : 0;
            model.lines += polygon.vertices == 2 ? 1 : 0;
        } else if (!polygon.has_valid_indices) {
            ++model.broken_faces;
        } else {
            corners.assign(polygon.indices.begin(), polygon.indices.end());
            // The word after the points is the surface, counted from 1, and negative before a list of
            // details.
            const auto word = static_cast<std::int16_t>(polygon.indices.data()[polygon.vertices]);
            const auto number = static_cast<std::size_t>(std::clamp(std::abs(int{word}), 1, INT16_MAX)) - 1;
            mesh.add_face(corners, static_cast<std::uint32_t>(std::min(number, mesh.surfaces.size() - 1)));
        }
    });
    return model;
}

} // namespace convert
