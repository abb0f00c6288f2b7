// SPDX-License-Identifier: MIT
// Sets buffers, settings and rotation as the display and the frame loop do.
#include "scene.h"

#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "pipeline/rotation.h"
#include "raster/dots.h"
#include "raster/texture_map.h"

#include <numbers>

void open_frame(int width, int height) {
    viewer.width = width;
    viewer.height = height;
    allocate_frame_buffers(width, height);
    for (std::size_t i = 0; i < frame_pixels(); ++i) {
        chunkybuf2[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
    }
    allocate_envmap();
    for (std::size_t i = 0; i < envmap_bytes; ++i) {
        envmap[i] = static_cast<std::uint8_t>((i & 255) ^ (i >> 8));
    }
    allocate_dot_image();
    build_dot_image();
}

void reset_scene() {
    viewer = ViewerState{};
    viewer.width = frame_width;
    viewer.height = frame_height;
}

void next_step() {
    viewer.spin_angle += 2.0 * std::numbers::pi / steps_per_turn / radians_per_spin;
}
