// SPDX-License-Identifier: MIT
// Centres and scales the object and computes its vertex normals.
#include "pipeline/preparation.h"

#include "core/forms.h"
#include "object/model.h"
#include "object/polygon_list.h"
#include "pipeline/lighting.h"
#include "pipeline/rotation.h"
#include "pipeline/sine_table.h"
#include "raster/dots.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace {

std::span<Vec3> points_as_read() {
    return {point_chunk.get(), static_cast<std::size_t>(points_to_process())};
}

/// Sum of squares in float, from left to right.
float squared_length(const Vec3 &v) {
    return v.x * v.x + v.y * v.y + v.z * v.z;
}

/// Moves the centre of the bounding box to the origin.
void centre_object(std::span<Vec3> points) {
    Vec3 low = points.front();
    Vec3 high = points.front();
    for (const Vec3 &p : points) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    const Vec3 shift{(low.x + high.x) * -0.5F, (low.y + high.y) * -0.5F, (low.z + high.z) * -0.5F};
    for (Vec3 &p : points) {
        p = {p.x + shift.x, p.y + shift.y, p.z + shift.z};
    }
}

/// Scales the object so that its farthest point is at the prepared radius. x is mirrored, which the half
/// turns of the viewing rotation undo.
void scale_object(std::span<Vec3> points) {
    float farthest = 0.0F;
    for (const Vec3 &p : points) {
        farthest = std::max(farthest, squared_length(p));
    }
    const float radius = std::sqrt(farthest);
    const auto scale = static_cast<float>(prepared_radius / static_cast<double>(radius));
    for (Vec3 &p : points) {
        p = {p.x * -scale, p.y * scale, p.z * scale};
    }
}

} // namespace

namespace plain {

void fit_object() {
    const std::span<Vec3> points = points_as_read();
    centre_object(points);
    scale_object(points);
    std::copy(points.begin(), points.end(), lwopoints2.get());
}

/// Adds each polygon's normal to those of its points. Its length is proportional to the triangle's area, so
/// large faces weigh more. The sums start from (1, 1, 1); this small bias is part of the picture.
void build_vertex_normals() {
    const std::span<Vec3> normals(lwonormals2.get(), static_cast<std::size_t>(points_to_process()));
    std::fill(normals.begin(), normals.end(), Vec3{1.0F, 1.0F, 1.0F});
    for_each_polygon([](const Polygon &polygon) {
        if (!polygon.has_valid_indices) {
            return;
        }
        const auto &indices = polygon.indices;
        const Vec3 normal =
            face_normal(lwopoints2[indices[0]], lwopoints2[indices[1]], lwopoints2[indices[2]]);
        for (const std::uint16_t point : indices.first(polygon.vertices)) {
            Vec3 &sum = lwonormals2[point];
            sum = {sum.x + normal.x, sum.y + normal.y, sum.z + normal.z};
        }
    });
    for (Vec3 &normal : normals) {
        scale_to_length(normal, normal_length);
    }
}

} // namespace plain

void prepare_object() {
    build_sine_table();
    build_dot_image();

    if (points_to_process() > 0) {
        if (draws_fast) {
            fast::fit_object();
        } else {
            plain::fit_object();
        }
    }
    transform_and_project();
    rotate_light();
    if (draws_fast) {
        fast::build_vertex_normals();
    } else {
        plain::build_vertex_normals();
    }
    reset_vertex_colours();
}

Vec3 face_normal(const Vec3 &a, const Vec3 &b, const Vec3 &c) {
    const Vec3 u{a.x - b.x, a.y - b.y, a.z - b.z};
    const Vec3 w{c.x - b.x, c.y - b.y, c.z - b.z};
    return {u.z * w.y - u.y * w.z, u.x * w.z - u.z * w.x, u.y * w.x - u.x * w.y};
}

void scale_to_length(Vec3 &v, float length) {
    const auto factor =
        static_cast<float>(static_cast<double>(length) / std::sqrt(static_cast<double>(squared_length(v))));
    v = {v.x * factor, v.y * factor, v.z * factor};
}
