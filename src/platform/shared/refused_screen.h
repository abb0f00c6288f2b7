// SPDX-License-Identifier: MIT
// Why a screen cannot be opened: a value that no screen has, and the settings file that it comes from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace host {

/// The number, from 1, of the line of a settings file that begins with this label, such as "width:", and goes
/// on with this value; nothing if there is none. An empty path is no file.
std::optional<int> line_of_value(const std::string &path, const std::string &label, std::int32_t value);

/// Says on standard error that there is no such display mode, beginning with the place in the settings file
/// that was loaded last, if the number is from there.
void report_unknown_mode(const std::string &settings_path, std::int32_t mode_id);

/// Says the same of each side that no screen can have; false if both are possible.
bool report_impossible_sides(const std::string &settings_path, std::int32_t width, std::int32_t height);

} // namespace host
