// SPDX-License-Identifier: MIT
// File names that survive the settings file, whose names end at the first blank.
#pragma once

#include <string>

namespace host {

/// The name with its white space written as "%20" (a blank), "%09" to "%0D" (a tab, the line ends), and with
/// each "%" that would read as such a form, or as "%25", written as "%25": "My textures/a.chunky" becomes
/// "My%20textures/a.chunky". Every other name stays as it is.
std::string without_blanks(const std::string &name);

/// Undoes without_blanks. Every name that it does not return stays as it is.
std::string with_blanks(const std::string &name);

} // namespace host
