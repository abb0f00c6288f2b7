// SPDX-License-Identifier: MIT
// The paths of the names that the program opens.
#pragma once

#include <optional>
#include <string>

namespace host {

/// The path of a name, in which without_blanks may have replaced the blanks. A name on ENV: or ENVARC: is in
/// that volume's folder, which is created for writing. A file that is installed with the program is looked
/// for in the current directory first. Any other name is a path already. Nothing if a volume has no folder;
/// errno then says why.
std::optional<std::string> path_of_name(const std::string &name, bool is_for_writing);

} // namespace host
