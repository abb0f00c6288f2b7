// SPDX-License-Identifier: MIT
// The paths of the names that the program opens.
#pragma once

#include <optional>
#include <string>

namespace host {

/// The path of a name, in which blanks may be written as without_blanks does: one of the volumes ENV:
/// and ENVARC: is in its folder, which is made for writing; the file that is installed with the program is
/// the one in the current directory, or else the installed one; any other name is a path already. Nothing if
/// a volume has no folder; errno then says why.
std::optional<std::string> path_of_name(const std::string &name, bool is_for_writing);

} // namespace host
