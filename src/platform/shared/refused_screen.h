// SPDX-License-Identifier: MIT
// Reports why a screen cannot be opened: a value that no screen can have, and the line of the settings file
// that it comes from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace host {

/// The number (from 1) of the first line of a settings file that has this label, such as "width:", and this
/// value; nothing if there is none. An empty path means no file.
std::optional<int> line_of_value(const std::string &path, const std::string &label, std::int32_t value);

/// Says on standard error that there is no such display mode. If the settings file has this number, the
/// message begins with its path and line.
void report_unknown_mode(const std::string &settings_path, std::int32_t mode_id);

/// Says the same about each side that no screen can have; false if both are possible.
bool report_impossible_sides(const std::string &settings_path, std::int32_t width, std::int32_t height);

} // namespace host
