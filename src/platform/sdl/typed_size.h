// SPDX-License-Identifier: MIT
// A screen's size as a user types it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace host {

/// Reads one side of a screen from a UTF-8 text: decimal digits of any script, with or without blanks around
/// them. Nothing for any other text, or for a side that no screen can have.
std::optional<int> side_of_text(const std::string &text);

/// How many bytes the program and the host need for a screen of this size.
std::uint64_t memory_of_screen(int width, int height);

/// How many bytes this process can use: the machine's memory, or the process's limit if that is lower.
std::uint64_t memory_of_machine();

} // namespace host
