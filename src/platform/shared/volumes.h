// SPDX-License-Identifier: MIT
// Files by the platform's names on a system that has folders instead of volumes.
#pragma once

#include "platform/shared/safe_file.h"

#include <cstdio>
#include <map>
#include <string>

namespace host {

/// The folder behind each volume, by the volume's name in capitals and without its colon.
using Volumes = std::map<std::string, std::string>;

/// The path of a name such as `ENV:Zelvo.vars`; a name of no known volume is a path already.
std::string path_of(const Volumes &volumes, const std::string &name);

/// Whether a name is on one of the platform's settings volumes, ENV or ENVARC.
bool is_on_settings_volume(const std::string &name);

/// Whether it is, and there is no folder for that volume here.
bool is_on_missing_volume(const Volumes &volumes, const std::string &name);

/// fopen for things that can be read and written like files: regular ones and character devices. A folder, a
/// pipe or a socket gives null, since one cannot be read and the others may block for ever. What is written
/// is saved when it is closed (open_for_saving); `on_failed_save` is called if it cannot be opened or saved.
std::FILE *open_plain_file(const std::string &path, const char *mode,
                           const OnFailedSave &on_failed_save = {});

/// Says on standard error that what was written under a name of the platform was not saved, where it should
/// have gone (empty if there is no place for it), and why, by a value of errno. Returns that text, a line
/// without its end.
std::string report_failed_save(const std::string &name, const std::string &path, int error);

} // namespace host
