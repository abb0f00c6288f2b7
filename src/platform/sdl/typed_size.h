// SPDX-License-Identifier: MIT
// A screen's size as a user types it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace host {

/// The side of a screen that a text in UTF-8 means: decimal digits of any script, with or without blanks
/// around them. Nothing for any other text, and for a side that no screen can have.
std::optional<int> side_of_text(const std::string &text);

/// How many bytes a screen of a size takes with all that the program and the host keep for it.
std::uint64_t memory_of_screen(int width, int height);

/// How many bytes the machine has for this process: its memory, or less if the process has a limit.
std::uint64_t memory_of_machine();

} // namespace host
