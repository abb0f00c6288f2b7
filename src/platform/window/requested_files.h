// SPDX-License-Identifier: MIT
// What a file requester needs to know about files. Every host with a window defines these functions.
#pragma once

#include <string>

namespace host {

/// The absolute path of the file that the program would open under this name; empty if there is none.
std::string existing_path(const std::string &name);

/// The system's error number that the program would get on opening this file; 0 if it could open it.
int error_of_opening(const std::string &path);

} // namespace host
