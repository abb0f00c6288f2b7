// SPDX-License-Identifier: MIT
// Releases everything in a fixed order and ends the process.
#include "core/fatal_exit.h"

#include "display/screen.h"
#include "main_68k/command_line.h"
#include "main_68k/libraries.h"
#include "object/model.h"
#include "raster/dots.h"
#include "raster/texture_map.h"

#include <cstdio>
#include <cstdlib>

void fatal_exit(const char *text) {
    release_model();
    release_envmap();
    free_command_line();
    close_display();
    close_libraries();
    release_dot_image();

    if (text != nullptr) {
        std::fputs(text, stdout);
    }
    std::exit(text != nullptr ? exit_failure : exit_normal);
}
