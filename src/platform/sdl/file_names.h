// SPDX-License-Identifier: MIT
// The paths behind the names that the program opens.
#pragma once

#include <optional>
#include <string>

namespace desktop {

/// The path of a name, in which blanks may be written as host::without_blanks does: one of the volumes ENV:
/// and ENVARC: is in its folder, which is made for writing; the file that is installed with the program is
/// the one in the current directory, or else the installed one; any other name is a path already. Nothing if
/// a volume has no folder; errno then says why.
std::optional<std::string> path_of_name(const std::string &name, bool is_for_writing);

/// The absolute path of the file that the program would open under a name, empty if there is none.
std::string existing_path(const std::string &name);

/// Why the program would not get this file when it opens it: the system's error number, 0 if it would.
int error_of_opening(const std::string &path);

} // namespace desktop
