// SPDX-License-Identifier: MIT
// What dos.library knows about the start.
#pragma once

namespace amiga {

/// Keeps the words that ReadArgs parses.
void keep_command_line(int argc, char **argv);

} // namespace amiga
