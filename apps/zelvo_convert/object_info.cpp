// SPDX-License-Identifier: MIT
// Describes the chunks, and the model that the viewer's reader makes of them.
#include "object_info.h"

#include "messages.h"
#include "object/model.h"
#include "object/polygon_list.h"
#include "object_chunks.h"
#include "object_import.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace convert {

namespace {

std::string shown(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", number);
    return text;
}

/// The polygons as the viewer finds them.
struct Polygons {
    std::size_t all = 0;
    std::size_t broken = 0;
    std::size_t short_ones = 0;
};

Polygons count_polygons() {
    Polygons polygons;
    const std::int32_t unvisited = for_each_polygon([&polygons](const Polygon &polygon) {
        ++polygons.all;
        polygons.broken += polygon.has_valid_indices ? 0 : 1;
        polygons.short_ones += polygon.vertices < 3 ? 1 : 0;
    });
    polygons.all += static_cast<std::size_t>(std::max(unvisited, 0));
    return polygons;
}

void describe_points() {
    Bounds bounds;
    bool is_finite = true;
    for (std::int32_t i = 0; i < points_to_process(); ++i) {
        const Vector p(point_chunk[static_cast<std::size_t>(i)]);
        is_finite = is_finite && std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
        bounds.include(p);
    }
    send_note(is_finite ? shown_bounds(bounds)
                        : "a coordinate is infinite or no number: nothing can be seen");
}

} // namespace

std::string shown_bounds(const Bounds &bounds) {
    const auto &[low, high] = bounds;
    return "x from " + shown(low.x) + " to " + shown(high.x) + ", y from " + shown(low.y) + " to " +
           shown(high.y) + ", z from " + shown(low.z) + " to " + shown(high.z);
}

void describe_object(const std::string &path) {
    const Chunks chunks = chunks_of(path);
    for (const Chunk &chunk : chunks.list) {
        send_note(
            "chunk " + chunk.name + ": " + counted(chunk.size, "byte") +
            (chunk.present < chunk.size ? ", of which the file has " + std::to_string(chunk.present) : ""));
    }
    note_if(chunks.rest, "byte", "after the last chunk");
    for (const LwobSurface &surface : surfaces_in(chunks)) {
        send_note("surface \"" + surface.name + "\"");
    }
    read_as_the_viewer(path);
    const Polygons polygons = count_polygons();
    send_summary(counted(static_cast<std::size_t>(point_count()), "point") + ", " +
                 counted(polygons.all, "polygon") + ": the viewer takes it");
    if (point_count() > 0) {
        describe_points();
    }
    note_if(static_cast<std::size_t>(unread_points), "point", "past the end of the file, all zero");
    note_if(static_cast<std::size_t>(unread_polygon_words), "word",
            "of polygons past the end of the file, all zero");
    note_if(polygons.broken, "polygon", "not drawn: a point is missing");
    note_if(polygons.short_ones, "polygon", "of fewer than three points");
}

} // namespace convert
