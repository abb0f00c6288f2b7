// SPDX-License-Identifier: MIT
// Writes and reads the settings with the C library's formatted output and input.
#include "settings/settings_file.h"

#include "main_68k/viewer_state.h"
#include "platform/dos.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr char closing_line[] = "*** Please don't edit this file! ***";

} // namespace

int save_vars(const char *path) {
    std::FILE *file = open_file(path, "w");
    if (file == nullptr) {
        return 0;
    }
    std::fprintf(file, "gammas: %lf %lf %lf\n", viewer.gammas.red, viewer.gammas.green, viewer.gammas.blue);
    std::fprintf(file, "rotate: %lf\n", viewer.rotate);
    std::fprintf(file, "obj style: %d\n", viewer.obj_style);
    std::fprintf(file, "clear style: %d\n", viewer.clear_style);
    std::fprintf(file, "fps: %d\n", viewer.fps);
    std::fprintf(file, "dots: %d\n", viewer.dots);
    std::fprintf(file, "dot lum: %d\n", viewer.dot_lum);
    std::fprintf(file, "dot lum in blur: %d\n", viewer.dot_lum_in_blur);
    std::fprintf(file, "internal c2p enabled: %d\n", viewer.internal_c2p_enabled);
    std::fprintf(file, "envmap filename: %s\n", viewer.envmap_filename.data());
    std::fprintf(file, "ModeID: %d\n", viewer.ModeID);
    std::fprintf(file, "width: %d\n", viewer.width);
    std::fprintf(file, "height: %d\n", viewer.height);
    std::fwrite(closing_line, 1, std::strlen(closing_line), file);
    return std::fclose(file);
}

int load_vars(const char *path) {
    std::FILE *file = open_file(path, "r");
    if (file == nullptr) {
        return 0;
    }
    // Results are ignored on purpose. A format that fails has consumed the part that matched; the next one
    // continues there.
    (void)std::fscanf(file, "gammas: %lf %lf %lf\n", &viewer.gammas.red, &viewer.gammas.green,
                      &viewer.gammas.blue);
    (void)std::fscanf(file, "rotate: %lf\n", &viewer.rotate);
    (void)std::fscanf(file, "obj style: %d\n", &viewer.obj_style);
    (void)std::fscanf(file, "clear style: %d\n", &viewer.clear_style);
    (void)std::fscanf(file, "fps: %d\n", &viewer.fps);
    (void)std::fscanf(file, "dots: %d\n", &viewer.dots);
    (void)std::fscanf(file, "dot lum: %d\n", &viewer.dot_lum);
    (void)std::fscanf(file, "dot lum in blur: %d\n", &viewer.dot_lum_in_blur);
    (void)std::fscanf(file, "internal c2p enabled: %d\n", &viewer.internal_c2p_enabled);
    (void)std::fscanf(file, "envmap filename: %1023s\n", viewer.envmap_filename.data());
    (void)std::fscanf(file, "ModeID: %d\n", &viewer.ModeID);
    (void)std::fscanf(file, "width: %d\n", &viewer.width);
    (void)std::fscanf(file, "height: %d\n", &viewer.height);
    std::fclose(file);
    return 1;
}
