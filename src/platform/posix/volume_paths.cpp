// SPDX-License-Identifier: MIT
// Maps volumes to folders.
#include "platform/posix/volume_paths.h"

#include "platform/shared/command_line.h"

#include <algorithm>
#include <cctype>

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

} // namespace host
