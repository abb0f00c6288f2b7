// SPDX-License-Identifier: MIT
// The steps of a conversion, and what is reported about them.
#include "conversion.h"

#include "cleaning.h"
#include "cutting.h"
#include "deviation.h"
#include "messages.h"
#include "object_info.h"
#include "reduction.h"
#include "shared/child_process.h"

#include <algorithm>
#include <cstdio>

namespace convert {

namespace {

/// How much of the work is done after each step, in percent.
constexpr int cleaned_percent = 60;
constexpr int reduced_percent = 80;
constexpr int measured_percent = 95;

/// A surface's number is a signed word in the file, counted from 1.
void limit_surfaces(Mesh &mesh) {
    constexpr std::size_t most_surfaces = 32767;
    if (mesh.surfaces.size() <= most_surfaces) {
        return;
    }
    note_if(mesh.surfaces.size() - most_surfaces, "surface",
            "merged with the last one that the file can hold");
    mesh.surfaces.resize(most_surfaces);
    for (Face &face : mesh.faces) {
        face.surface = std::min(face.surface, static_cast<std::uint32_t>(most_surfaces - 1));
    }
}

void flip(Mesh &mesh) {
    for (const Face &face : mesh.faces) {
        const auto first = mesh.corners.begin() + static_cast<std::ptrdiff_t>(face.first);
        std::reverse(first + 1, first + face.corners);
    }
}

/// Two significant digits: `0.25%`.
std::string percent(double part) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2g%%", part * 100.0);
    return text;
}

/// Reduces the mesh if it is larger than was asked for.
void reduce_to(const Wishes &wishes, Mesh &mesh) {
    if (mesh.points.size() <= wishes.most_points && mesh.faces.size() <= wishes.most_polygons) {
        return;
    }
    const std::string before =
        counted(mesh.points.size(), "point") + " and " + counted(mesh.faces.size(), "polygon");
    cut_all(mesh);
    const Mesh original = mesh;
    if (!reduce(mesh, wishes.most_points, wishes.most_polygons)) {
        refuse("its " + before + " cannot be reduced that far");
    }
    send_progress(reduced_percent);
    send_note("reduced from " + before + " to " + counted(mesh.points.size(), "point") + " and " +
              counted(mesh.faces.size(), "polygon") + "; the shape differs by at most " +
              percent(deviation(original, mesh)) + " of its size");
    send_progress(measured_percent);
}

void describe(const Mesh &mesh) {
    send_note(shown_bounds(bounds_of(mesh)));
    std::vector<std::size_t> polygons(mesh.surfaces.size());
    for (const Face &face : mesh.faces) {
        ++polygons[face.surface];
    }
    for (std::size_t i = 0; i < mesh.surfaces.size(); ++i) {
        send_note("surface \"" + mesh.surfaces[i].name + "\": " + counted(polygons[i], "polygon"));
    }
}

LwobObject object_of(const Mesh &mesh) {
    LwobObject object;
    object.points = mesh.points;
    object.surfaces = mesh.surfaces;
    for (const Face &face : mesh.faces) {
        object.polygon_words.push_back(static_cast<std::uint16_t>(face.corners));
        for (const std::uint32_t corner : mesh.corners_of(face)) {
            object.polygon_words.push_back(static_cast<std::uint16_t>(corner));
        }
        object.polygon_words.push_back(static_cast<std::uint16_t>(face.surface + 1));
    }
    return object;
}

/// Refuses a model without faces, and says why it has none.
void refuse_without_faces(const Model &model, const Cleaned &cleaned) {
    if (!model.mesh.faces.empty()) {
        return;
    }
    if (cleaned.flat_faces + cleaned.endless_faces + model.broken_faces != 0) {
        refuse("none of its polygons has an area");
    }
    if (model.lines + model.single_points != 0 || cleaned.unused_points != 0) {
        refuse("it has only points and lines, no polygons");
    }
    refuse("it has no polygons");
}

} // namespace

void convert_model(const std::string &path, const Wishes &wishes) {
    Model model = import_model(path, wishes.up);
    Mesh &mesh = model.mesh;
    const Cleaned cleaned = clean(mesh);
    refuse_without_faces(model, cleaned);
    send_progress(cleaned_percent);
    note_if(model.lines, "line", "left out: the viewer shows polygons only");
    note_if(model.single_points, "single point", "left out: the viewer shows polygons only");
    note_if(model.broken_faces, "polygon", "left out: a point is missing");
    note_if(cleaned.endless_faces, "polygon", "left out: a coordinate is infinite or no number");
    note_if(cleaned.flat_faces, "polygon", "left out: no area");
    note_if(cleaned.unused_points, "point", "left out: not used by any polygon");
    if (wishes.has_only_triangles) {
        cut_all(mesh);
    } else {
        note_if(cut_concave(mesh).concave_polygons, "concave polygon", "cut into triangles");
    }
    limit_surfaces(mesh);
    reduce_to(wishes, mesh);
    const auto two_sided = std::ranges::count_if(mesh.surfaces, &LwobSurface::is_two_sided);
    note_if(static_cast<std::size_t>(two_sided), "surface",
            "meant to be seen from both sides (\"d\" in the viewer)");
    if (wishes.is_flipped) {
        flip(mesh);
    }
    send_summary(counted(mesh.points.size(), "point") + ", " + counted(mesh.faces.size(), "polygon") + ", " +
                 counted(mesh.surfaces.size(), "surface") + " (" + model.format + ")");
    if (wishes.is_described) {
        describe(mesh);
    }
    const LwobObject object = object_of(mesh);
    if (object.polygon_words.size() > INT32_MAX / 2) {
        refuse("its polygons do not fit into an object file");
    }
    const Bytes bytes = encode_lwob(object);
    send_to_parent(object_message, {reinterpret_cast<const char *>(bytes.data()), bytes.size()});
}

} // namespace convert
