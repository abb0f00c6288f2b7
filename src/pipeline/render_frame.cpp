// SPDX-License-Identifier: MIT
// Seven drivers, one per mode, each a fixed sequence of stages, and the table that selects one.
#include "pipeline/render_frame.h"

#include "main_68k/viewer_state.h"
#include "pipeline/clearing.h"
#include "pipeline/dots_effect.h"
#include "pipeline/lighting.h"
#include "pipeline/rotation.h"
#include "raster/dots.h"
#include "raster/face_loops.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace {

void draw_dots_if_enabled() {
    if (viewer.dots != 0) {
        draw_dots_overlay();
    }
}

void draw_mode_effect() {
    clear_frame();
    draw_dots_effect();
}

void draw_mode_envmap() {
    clear_frame();
    clear_depths_for_faces();
    transform_and_project();
    rotate_normals();
    face_loop_envmap();
    draw_dots_if_enabled();
}

void draw_mode_texturemap() {
    clear_frame();
    clear_depths_for_faces();
    transform_and_project();
    face_loop_texturemap(face_lights);
    draw_dots_if_enabled();
}

/// While the mouse turns the light, the object does not move.
void draw_mode_lightsourced() {
    clear_frame();
    clear_depths_for_faces();
    if (viewer.lightsource_rotating != 0) {
        rotate_light();
    } else {
        transform_and_project();
    }
    face_loop_lightsourced(face_lights);
    draw_dots_if_enabled();
}

void draw_mode_gouraud() {
    clear_frame();
    clear_depths_for_faces();
    if (viewer.lightsource_rotating != 0) {
        rotate_light();
    } else {
        transform_and_project();
        rotate_normals();
    }
    reset_vertex_colours();
    face_loop_gouraud(vertex_lights);
    draw_dots_if_enabled();
}

void draw_mode_zlight() {
    clear_frame();
    clear_depths_for_faces();
    transform_and_project();
    face_loop_zlight();
    draw_dots_if_enabled();
}

void draw_mode_dots() {
    clear_frame();
    transform_and_project();
    draw_dots_overlay();
}

/// Indexed by RenderMode.
constexpr std::array<void (*)(), 7> mode_table{
    draw_mode_effect,  draw_mode_envmap, draw_mode_texturemap, draw_mode_lightsourced,
    draw_mode_gouraud, draw_mode_zlight, draw_mode_dots,
};

} // namespace

void render_frame() {
    const auto mode = static_cast<std::uint32_t>(viewer.obj_style);
    if (mode < mode_table.size()) {
        mode_table[mode]();
    }
}
