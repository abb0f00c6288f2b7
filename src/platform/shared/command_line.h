// SPDX-License-Identifier: MIT
// The platform's rules for command lines and paths, for hosts whose own rules differ.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// The file by the template "FILE/A": exactly one word, optionally after the keyword, as `FILE=name` or `FILE
/// name`; the keyword's case does not matter. Nothing if there are no words, too many, or only the keyword.
std::optional<std::string> file_argument(const std::vector<std::string> &words);

/// `drawer` and `file` with a "/" between them, unless the drawer is empty or ends in ":" or "/".
std::string join_path(const std::string &drawer, const std::string &file);

/// Joins `file` to the zero-terminated text `drawer` in place. If that needs more than `size` bytes, returns
/// false and changes nothing.
bool join_path_in_place(char *drawer, const char *file, std::size_t size);

} // namespace host
