// SPDX-License-Identifier: MIT
// The names of pictures that the user saves.
#pragma once

#include <ctime>
#include <string>

namespace host {

/// The path of a new file in a folder: the object's name without its folder and suffix, and the local time,
/// such as "torus_2026-02-28_17-05-09.png". Where there is one of this name, "-2" or a higher number comes
/// before the suffix.
std::string saved_picture_path(const std::string &folder, const std::string &object, std::time_t time);

} // namespace host
