// SPDX-License-Identifier: MIT
// File names with a number in them.
#pragma once

#include <string>

/// Whether the pattern holds exactly one conversion such as %d or %05d, besides %%.
bool is_picture_pattern(const std::string &pattern);

/// Whether the pattern holds no conversion, besides %%.
bool is_plain_name(const std::string &pattern);

/// Whether the text holds %s, but not as a part of %%s.
bool has_object_name(const std::string &text);

/// The text with the name in place of each %s, and each %% as it is.
std::string with_object_name(const std::string &text, const std::string &name);

/// The name as a part of a pattern, with each percent sign doubled.
std::string escaped(const std::string &name);

/// The pattern with the number in place of its conversion, if it has one.
std::string picture_name(const std::string &pattern, int number);
