// SPDX-License-Identifier: MIT
// What a file requester has to know about files. Every host with a window defines these functions.
#pragma once

#include <string>

namespace host {

/// The absolute path of the file that the program would open under a name, empty if there is none.
std::string existing_path(const std::string &name);

/// Why the program would not get this file when it opens it: the system's error number, 0 if it would.
int error_of_opening(const std::string &path);

} // namespace host
