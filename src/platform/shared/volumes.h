// SPDX-License-Identifier: MIT
// Files by the platform's names on a system that has folders instead of volumes.
#pragma once

#include <cstdio>
#include <map>
#include <string>

namespace host {

/// The folder behind each volume, by the volume's name in capitals and without its colon.
using Volumes = std::map<std::string, std::string>;

/// The path of a name such as `ENV:Zelvo.vars`; a name of no known volume is a path already.
std::string path_of(const Volumes &volumes, const std::string &name);

/// Whether a name is on one of the platform's settings volumes, ENV or ENVARC, and no folder stands behind it
/// here.
bool is_on_missing_volume(const Volumes &volumes, const std::string &name);

/// fopen for things that can be read and written like files: regular ones and character devices. A folder, a
/// pipe or a socket gives null, since one cannot be read and the others may block for ever. A file opened for
/// writing takes the old one's place when it is closed, and only if it is whole (open_replacing).
std::FILE *open_plain_file(const std::string &path, const char *mode);

} // namespace host
