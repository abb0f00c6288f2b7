// SPDX-License-Identifier: MIT
// The fast forms of the pipeline where they were not built: the plain ones under their names.
#include "pipeline/clearing.h"
#include "pipeline/dots_effect.h"
#include "pipeline/lighting.h"
#include "pipeline/preparation.h"
#include "pipeline/rotation.h"

namespace fast {

void fade_pixels(const std::uint8_t *source, std::uint8_t *destination, std::size_t count) {
    plain::fade_pixels(source, destination, count);
}

void blur_pixels(const std::uint8_t *centre, std::uint8_t *destination, std::size_t count) {
    plain::blur_pixels(centre, destination, count);
}

std::int32_t plot_effect_curve() {
    return plain::plot_effect_curve();
}

void project_points(const Projection &projection) {
    plain::project_points(projection);
}

void rotate_normals() {
    plain::rotate_normals();
}

void fit_object() {
    plain::fit_object();
}

void build_vertex_normals() {
    plain::build_vertex_normals();
}

void face_lights(const FaceCorners &corners, std::size_t count, float *colours) {
    plain::face_lights(corners, count, colours);
}

void vertex_lights(const std::uint32_t *points, std::size_t count) {
    plain::vertex_lights(points, count);
}

} // namespace fast
