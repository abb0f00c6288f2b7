// SPDX-License-Identifier: MIT
// Maps volumes to folders and opens files by path.
#include "platform/shared/volumes.h"

#include "platform/shared/command_line.h"
#include "platform/shared/safe_file.h"

#include <algorithm>
#include <cctype>
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

bool is_on_missing_volume(const Volumes &volumes, const std::string &name) {
    const std::string volume = volume_of(name);
    return (volume == "ENV" || volume == "ENVARC") && !volumes.contains(volume);
}

std::FILE *open_plain_file(const std::string &path, const char *mode) {
    struct stat status {};
    const bool exists = stat(path.c_str(), &status) == 0;
    const bool is_device = exists && S_ISCHR(status.st_mode);
    if (exists && !S_ISREG(status.st_mode) && !is_device) {
        return nullptr;
    }
    return mode[0] == 'w' && !is_device ? open_replacing(path) : std::fopen(path.c_str(), mode);
}

} // namespace host
