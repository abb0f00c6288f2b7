// SPDX-License-Identifier: MIT
// zelvo-counted-frames WIDTHxHEIGHT...: draws the sphere of 20,480 triangles in these sizes, env-mapped, flat
// and with Gouraud shading, by the plain and by the fast forms, and compares the two. Writes a line to
// standard error before and after each frame, so that a program that counts instructions knows which of them
// belong to the frame.
#include "scene.h"

#include "core/forms.h"
#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "pipeline/render_frame.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

/// Draws the current frame by one of the forms, between its two lines.
std::vector<std::uint8_t> draw_counted(bool is_fast) {
    draws_fast = is_fast;
    std::fprintf(stderr, "frame %dx%d %d %s\n", frame_width, frame_height, viewer.obj_style,
                 is_fast ? "fast" : "plain");
    render_frame();
    std::fputs("end\n", stderr);
    return {chunkybuf1.get(), chunkybuf1.get() + frame_pixels()};
}

} // namespace

int main(int argc, char **argv) {
    const Mesh sphere = make_sphere(5);
    for (int i = 1; i < argc; ++i) {
        int width = 0;
        int height = 0;
        if (std::sscanf(argv[i], "%dx%d", &width, &height) != 2 || width < 1 || height < 1) {
            std::fprintf(stderr, "no size: %s\n", argv[i]);
            return 2;
        }
        open_frame(width, height);
        show_mesh(sphere);
        reset_scene();
        viewer.tilt_x = 25;
        viewer.tilt_y = 40;
        for (const int mode : {mode_envmap, mode_lightsourced, mode_gouraud}) {
            viewer.obj_style = mode;
            if (draw_counted(false) != draw_counted(true)) {
                std::fprintf(stderr, "the forms differ in mode %d at %s\n", mode, argv[i]);
                return EXIT_FAILURE;
            }
        }
    }
}
