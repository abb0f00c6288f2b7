// SPDX-License-Identifier: MIT
// Files on a desktop: the settings volumes as folders, and the installed texture.
#include "platform/dos.h"

#include "platform/posix/replacing_file.h"
#include "platform/posix/volume_paths.h"
#include "platform/sdl/failed_saves.h"
#include "platform/sdl/file_names.h"
#include "platform/window/chosen_screen.h"
#include "platform/window/recording.h"
#include "platform/window/windowed_host.h"

#include <cerrno>
#include <filesystem>

using namespace host;

namespace {

/// The settings file with the screen that was chosen for this run, if one was.
std::FILE *with_chosen_screen(std::FILE *file) {
    const ChosenScreen chosen = take_chosen_screen();
    if (!chosen.is_any()) {
        return file;
    }
    std::string text;
    for (int character = std::fgetc(file); character != EOF; character = std::fgetc(file)) {
        text += static_cast<char>(character);
    }
    std::fclose(file);
    text = with_screen(text, chosen);
    std::FILE *changed = fmemopen(nullptr, text.size() + 1, "w+");
    if (changed != nullptr) {
        std::fwrite(text.data(), 1, text.size(), changed);
        std::rewind(changed);
    }
    return changed;
}

} // namespace

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
    if (mode == std::string("rb") && name[0] != '/') {
        std::error_code error;
        record_file(name, file != nullptr ? std::filesystem::absolute(*path, error).string() : "");
    }
    if (file != nullptr && object_path.empty() && mode == std::string("rb")) {
        object_path = *path;
    }
    if (file != nullptr && !is_for_saving && is_on_settings_volume(name)) {
        settings_path = *path;
        return with_chosen_screen(file);
    }
    return file;
}
