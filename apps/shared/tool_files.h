// SPDX-License-Identifier: MIT
// Files that a tool reads and writes, and what it says about them.
#pragma once

#include <string>

/// Why a file cannot be read; empty for a regular file that can be, and has at least one byte.
std::string unreadable(const std::string &path);

/// Writes a whole file or none, and makes its folder if there is none. Returns why it could not, or nothing.
std::string save(const std::string &path, const std::string &bytes);

/// The text with a question mark for every character that would end a line or steer a terminal. The name of a
/// file may have such characters.
std::string printable(std::string text);

/// The same, without such characters at the end: messages of libraries may end with a line end.
std::string one_line(std::string text);
