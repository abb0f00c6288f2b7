// SPDX-License-Identifier: MIT
// Files on a desktop: the settings volumes as folders, and the installed texture.
#include "platform/dos.h"

#include "platform/posix/replacing_file.h"
#include "platform/posix/volume_paths.h"
#include "platform/sdl/failed_saves.h"
#include "platform/sdl/file_names.h"
#include "platform/window/windowed_host.h"

#include <cerrno>

using namespace host;

std::FILE *open_file(const char *name, const char *mode) {
    const bool is_for_saving = mode[0] == 'w';
    const std::optional<std::string> path = path_of_name(name, is_for_saving);
    if (!path) {
        if (is_for_saving) {
            tell_of_failed_save(name, "", errno);
        }
        return nullptr;
    }
    std::FILE *file = open_plain_file(*path, mode, [name = std::string(name), path = *path](int error) {
        tell_of_failed_save(name, path, error);
    });
    if (file != nullptr && !is_for_saving && is_on_settings_volume(name)) {
        settings_path = *path;
    }
    return file;
}
