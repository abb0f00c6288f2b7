// SPDX-License-Identifier: MIT
// Maps volumes to folders and opens files by path.
#include "platform/shared/volumes.h"

#include "platform/shared/command_line.h"
#include "platform/shared/safe_file.h"

#include <algorithm>
#include <cctype>
#include <sys/stat.h>

namespace host {

std::string path_of(const Volumes &volumes, const std::string &name) {
    const std::size_t colon = name.find(':');
    if (colon == std::string::npos) {
        return name;
    }
    std::string volume = name.substr(0, colon);
    std::transform(volume.begin(), volume.end(), volume.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    const auto folder = volumes.find(volume);
    return folder == volumes.end() ? name : join_path(folder->second, name.substr(colon + 1));
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
