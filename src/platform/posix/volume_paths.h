// SPDX-License-Identifier: MIT
// Finds files by the platform's names on a system that has folders instead of volumes.
#pragma once

#include <map>
#include <string>

namespace host {

/// The folder of each volume. The key is the volume's name in capitals, without its colon.
using Volumes = std::map<std::string, std::string>;

/// The path of a name such as `ENV:Zelvo.vars`; a name of no known volume is a path already.
std::string path_of(const Volumes &volumes, const std::string &name);

/// Whether a name is on one of the platform's settings volumes, ENV or ENVARC.
bool is_on_settings_volume(const std::string &name);

/// Whether a name is on a settings volume that has no folder.
bool is_on_missing_volume(const Volumes &volumes, const std::string &name);

} // namespace host
