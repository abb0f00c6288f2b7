// SPDX-License-Identifier: MIT
// File names with a number in them.
#pragma once

#include <string>

/// Whether the pattern has exactly one conversion such as %d or %05d; %% does not count.
bool is_picture_pattern(const std::string &pattern);

/// Whether the pattern has no conversion; %% does not count.
bool is_plain_name(const std::string &pattern);

/// Whether the text contains %s, not counting %%s.
bool has_object_name(const std::string &text);

/// The text with each %s replaced by the name; %% stays as it is.
std::string with_object_name(const std::string &text, const std::string &name);

/// The name for use in a pattern, with each percent sign doubled.
std::string escaped(const std::string &name);

/// The pattern with its conversion, if it has one, replaced by the number.
std::string picture_name(const std::string &pattern, int number);
