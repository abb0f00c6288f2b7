// SPDX-License-Identifier: MIT
// Maps volumes to settings folders and finds installed files.
#include "platform/sdl/file_names.h"

#include "platform/posix/folders.h"
#include "platform/posix/replacing_file.h"
#include "platform/posix/volume_paths.h"
#include "platform/sdl/host.h"
#include "platform/sdl/window_state.h"
#include "platform/shared/blank_free_names.h"
#include "platform/shared/command_line.h"
#include "platform/shared/state.h"
#include "platform/window/recording.h"
#include "platform/window/requested_files.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

/// What the run depends on; the host's state holds the command line. Written by set_up.
sdl::Setup setup;

bool is_on_volume(const std::string &name, const std::string &volume) {
    return name.compare(0, volume.size() + 1, volume + ":") == 0;
}

std::optional<std::string> on_volume(const std::string &name, const std::string &volume,
                                     const std::optional<std::string> &folder) {
    return folder ? std::optional(path_of({{volume, *folder}}, name)) : std::nullopt;
}

bool exists(const std::string &path) {
    return access(path.c_str(), F_OK) == 0;
}

/// The name as the user knows it. A user may have written a name such as "a%20b" into a settings file and
/// mean it literally: such a name is kept if only the literal file exists.
std::string users_name(const std::string &name) {
    const std::string read = with_blanks(name);
    return !exists(read) && exists(name) ? name : read;
}

} // namespace

std::optional<std::string> path_of_name(const std::string &given_name, bool is_for_writing) {
    const std::string name = users_name(given_name);
    const auto stand_in = setup.stand_ins.find(name);
    if (stand_in != setup.stand_ins.end()) {
        return stand_in->second;
    }
    if (is_on_volume(name, "ENV") && setup.env_folder) {
        return on_volume(name, "ENV", setup.env_folder);
    }
    if (is_on_volume(name, "ENV")) {
        // Looked up once, so that the whole run uses the same folder.
        static const std::optional<std::string> folder = session_settings_folder();
        errno = EPERM;
        return on_volume(name, "ENV", folder);
    }
    if (is_on_volume(name, "ENVARC") && setup.envarc_folder) {
        return on_volume(name, "ENVARC", setup.envarc_folder);
    }
    if (is_on_volume(name, "ENVARC")) {
        const std::optional<std::string> folder = lasting_settings_folder();
        errno = ENOENT;
        const bool is_there = folder && (!is_for_writing || make_lasting_settings_folder(*folder));
        return is_there ? on_volume(name, "ENVARC", folder) : std::nullopt;
    }
    const bool is_installed = std::ranges::find(setup.installed_files, name) != setup.installed_files.end();
    if (is_installed && !is_for_writing && !exists(name)) {
        return installed_data_path(name);
    }
    return name;
}

std::string existing_path(const std::string &name) {
    const std::optional<std::string> path = name.empty() ? std::nullopt : path_of_name(name, false);
    std::error_code error;
    return path && std::filesystem::exists(*path, error) ? std::filesystem::absolute(*path, error).string()
                                                         : "";
}

int error_of_opening(const std::string &path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return errno;
    }
    if (S_ISDIR(status.st_mode)) {
        return EISDIR;
    }
    errno = 0;
    std::FILE *file = open_plain_file(path, "rb");
    if (file == nullptr) {
        // errno is still 0 when open_plain_file did not try: this is neither a regular file nor a device.
        return errno != 0 ? errno : ENOTSUP;
    }
    std::fclose(file);
    return 0;
}

} // namespace host

bool sdl::record_run(const std::string &path) {
    host::RecordedStart start;
    start.object = host::file_argument(host::state.command_line).value_or("");
    for (const char *volume : {"ENV", "ENVARC"}) {
        const auto settings = host::path_of_name(std::string(volume) + ":Zelvo.vars", false);
        std::ifstream file(settings.value_or(""), std::ios::binary);
        if (file) {
            start.settings[volume] = {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        }
    }
    if (start.settings.contains("ENV")) {
        start.settings["ENV"] = host::with_screen(start.settings["ENV"], host::chosen_screen);
    }
    return host::begin_recording(path, start);
}

void sdl::set_up(Setup setup) {
    // The program gets all names without white space.
    for (std::string &word : setup.command_line) {
        word = host::without_blanks(word);
    }
    host::state.command_line = setup.command_line;
    host::chosen_screen = setup.screen;
    host::inherit_window();
    host::setup = std::move(setup);
}
