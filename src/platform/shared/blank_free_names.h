// SPDX-License-Identifier: MIT
// File names without white space. A name in the settings file ends at the first blank.
#pragma once

#include <string>

namespace host {

/// Writes a name's white space as "%20" (a blank) or "%09" to "%0D" (a tab, the line ends): "My
/// textures/a.chunky" becomes "My%20textures/a.chunky". A "%" that would read as such a form, or as "%25", is
/// written as "%25". Every other name stays as it is.
std::string without_blanks(const std::string &name);

/// Undoes without_blanks. Every name that it does not return stays as it is.
std::string with_blanks(const std::string &name);

} // namespace host
