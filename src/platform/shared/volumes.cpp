// SPDX-License-Identifier: MIT
// Maps volumes to folders and opens files by path.
#include "platform/shared/volumes.h"

#include "platform/shared/command_line.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace host {

namespace {

/// The volume of a name, in capitals; empty if the name has none.
std::string volume_of(const std::string &name) {
    const std::size_t colon = name.find(':');
    std::string volume = colon == std::string::npos ? "" : name.substr(0, colon);
    std::transform(volume.begin(), volume.end(), volume.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return volume;
}

} // namespace

std::string path_of(const Volumes &volumes, const std::string &name) {
    const std::string volume = volume_of(name);
    const auto folder = volumes.find(volume);
    return folder == volumes.end() ? name : join_path(folder->second, name.substr(volume.size() + 1));
}

bool is_on_settings_volume(const std::string &name) {
    const std::string volume = volume_of(name);
    return volume == "ENV" || volume == "ENVARC";
}

bool is_on_missing_volume(const Volumes &volumes, const std::string &name) {
    return is_on_settings_volume(name) && !volumes.contains(volume_of(name));
}

std::FILE *open_plain_file(const std::string &path, const char *mode, const OnFailedSave &on_failed_save) {
    const bool is_for_saving = mode[0] == 'w';
    struct stat status {};
    const bool exists = stat(path.c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode) && !S_ISCHR(status.st_mode)) {
        if (is_for_saving && on_failed_save) {
            on_failed_save(S_ISDIR(status.st_mode) ? EISDIR : ENOTSUP);
        }
        return nullptr;
    }
    return is_for_saving ? open_for_saving(path, on_failed_save) : std::fopen(path.c_str(), mode);
}

std::string report_failed_save(const std::string &name, const std::string &path, int error) {
    const std::string place = path.empty() ? "" : " (" + path + ")";
    std::string text = name + " was not saved: " + std::strerror(error) + place;
    std::fprintf(stderr, "zelvo: %s\n", text.c_str());
    return text;
}

} // namespace host
