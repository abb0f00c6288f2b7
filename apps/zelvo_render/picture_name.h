// SPDX-License-Identifier: MIT
// File names with a number in them.
#pragma once

#include <string>

/// Whether the pattern holds exactly one conversion such as %d or %05d, besides %%.
bool is_picture_pattern(const std::string &pattern);

/// Whether the pattern holds no conversion, besides %%.
bool is_plain_name(const std::string &pattern);

/// The pattern with the number in place of its conversion, if it has one.
std::string picture_name(const std::string &pattern, int number);
