// SPDX-License-Identifier: MIT
// The platform's rules for command lines and paths, where a host's own differ.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// The file of the template "FILE/A": exactly one word, or the same after the keyword, as `FILE=name` or
/// `FILE name`, in any case of letters. None, too many, or the keyword alone do not parse.
std::optional<std::string> file_argument(const std::vector<std::string> &words);

/// `drawer` and `file` with a "/" between them, unless the drawer is empty or ends in ":" or "/".
std::string join_path(const std::string &drawer, const std::string &file);

/// Joins `file` to the terminated text `drawer` in place; false, and nothing changed, if that needs more than
/// `size` bytes.
bool join_path_in_place(char *drawer, const char *file, std::size_t size);

} // namespace host
