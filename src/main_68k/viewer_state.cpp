// SPDX-License-Identifier: MIT
// The viewer state's one instance, its reset, and the message line.
#include "main_68k/viewer_state.h"

#include <cstdarg>
#include <cstdio>

ViewerState viewer;
std::int32_t faces_seen = 0;
std::int32_t triangles_drawn = 0;

void reset_to_defaults() {
    const ViewerState defaults;
    viewer.gammas.blue = defaults.gammas.blue;
    viewer.rotate = defaults.rotate;
    viewer.internal_c2p_enabled = defaults.internal_c2p_enabled;
    viewer.fps = defaults.fps;
    viewer.dot_lum = defaults.dot_lum;
    viewer.dot_lum_in_blur = defaults.dot_lum_in_blur;
    viewer.gammas.red = defaults.gammas.red;
    viewer.gammas.green = defaults.gammas.green;
    viewer.obj_style = defaults.obj_style;
    viewer.clear_style = defaults.clear_style;
    viewer.dots = defaults.dots;
}

void show_message(const char *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(viewer.message_line.data(), viewer.message_line.size(), format, arguments);
    va_end(arguments);
    viewer.message_timer = message_duration;
}
