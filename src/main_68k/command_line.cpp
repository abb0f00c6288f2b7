// SPDX-License-Identifier: MIT
// Parses the command line by the system's template.
#include "main_68k/command_line.h"

#include "platform/dos.h"

#include <array>

namespace {

/// The parsed command line, which owns the object's name; null if there is none.
RDArgs *command_line = nullptr;

} // namespace

const char *object_name_from_command_line() {
    std::array<ArgumentSlot, 1> slots{};
    command_line = ReadArgs("FILE/A", slots.data(), nullptr);
    return command_line != nullptr ? reinterpret_cast<const char *>(slots[0]) : nullptr;
}

void free_command_line() {
    if (command_line != nullptr) {
        FreeArgs(command_line);
        command_line = nullptr;
    }
}
