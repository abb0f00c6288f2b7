// SPDX-License-Identifier: MIT
// Files that a tool reads and writes, and what it says about them.
#pragma once

#include <string>

/// Why a file cannot be read; empty if it can be. It must be a regular file of at least one byte.
std::string unreadable(const std::string &path);

/// Writes a whole file or none, and creates its folder if that is missing. Returns why that failed; empty if
/// it did not.
std::string save(const std::string &path, const std::string &bytes);

/// The text with a question mark for every character that would end a line or steer a terminal. The name of a
/// file may have such characters.
std::string printable(std::string text);

/// The same, without such characters at the end, where messages of libraries often have a line end.
std::string one_line(std::string text);
