// SPDX-License-Identifier: MIT
// The fast forms where they were not built: the plain ones under their names.
#include "raster/dots.h"
#include "raster/drawing_path.h"
#include "raster/face_loops.h"

const bool has_fast_path = false;

namespace fast {

void face_loop_envmap() {
    plain::face_loop_envmap();
}

void face_loop_texturemap(FaceLight face_light, FaceLights) {
    plain::face_loop_texturemap(face_light);
}

void face_loop_lightsourced(FaceLight face_light, FaceLights) {
    plain::face_loop_lightsourced(face_light);
}

void face_loop_gouraud(VertexLight vertex_light, VertexLights) {
    plain::face_loop_gouraud(vertex_light);
}

void face_loop_zlight() {
    plain::face_loop_zlight();
}

void plot_dots(const float *x, const float *y, const float *radius, std::size_t count) {
    plain::plot_dots(x, y, radius, count);
}

void plot_dots_at_points() {
    plain::plot_dots_at_points();
}

} // namespace fast
