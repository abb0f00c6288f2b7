// SPDX-License-Identifier: MIT
// Cosine lighting by one direction of light, scaled to palette indices.
#include "pipeline/lighting.h"

#include "core/forms.h"
#include "main_68k/viewer_state.h"
#include "object/model.h"
#include "pipeline/preparation.h"

#include <algorithm>
#include <cmath>

namespace {

/// Sum of three float products, from left to right.
float dot(const Vec3 &a, const Vec3 &b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// The colour for a normal of any length, whose scalar product with the light is `facing`.
float colour(float facing, const Vec3 &normal) {
    const float lengths = dot(normal, normal) * dot(viewer.light, viewer.light);
    auto cosine = static_cast<float>(facing / std::sqrt(static_cast<double>(lengths)) * diffuse_light);
    if (cosine < 0.0F) {
        cosine = 0.0F;
    }
    return cosine + ambient_light;
}

} // namespace

float face_light(const Vec3 &p0, const Vec3 &p1, const Vec3 &p2) {
    const Vec3 normal = face_normal(p0, p1, p2);
    return colour(dot(viewer.light, normal), normal);
}

float vertex_light(const Vec3 &normal) {
    const Vec3 &light = viewer.light;
    return colour(-light.x * normal.x - light.y * normal.y + light.z * normal.z, normal);
}

namespace plain {

void face_lights(const FaceCorners &corners, std::size_t count, float *colours) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto corner = [&corners, i](std::size_t c) {
            return Vec3{corners.x[c][i], corners.y[c][i], corners.depth[c][i]};
        };
        colours[i] = face_light(corner(0), corner(1), corner(2));
    }
}

void vertex_lights(const std::uint32_t *points, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        lwofis[points[i]] = vertex_light(lwonormals3[points[i]]);
    }
}

} // namespace plain

void face_lights(const FaceCorners &corners, std::size_t count, float *colours) {
    if (draws_fast) {
        fast::face_lights(corners, count, colours);
    } else {
        plain::face_lights(corners, count, colours);
    }
}

void vertex_lights(const std::uint32_t *points, std::size_t count) {
    if (draws_fast) {
        fast::vertex_lights(points, count);
    } else {
        plain::vertex_lights(points, count);
    }
}

void reset_vertex_colours() {
    std::fill_n(lwofis.get(), points_to_process(), not_yet_lit);
}
