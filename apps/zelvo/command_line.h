// SPDX-License-Identifier: MIT
// The command line of zelvo: options, and the words for the program.
#pragma once

#include "platform/sdl/host.h"

/// The exit code of a command line that cannot be carried out; the program's own are 0 and 20.
constexpr int exit_misuse = 2;

/// Puts the options into the set-up, and the words for the program, in order, into its command line. Options
/// for help, the version and the template print it and end the process. An option with an impossible value,
/// and a word that begins with "-" and is neither an option nor a file, end it with exit code 2. All words
/// after "--" are files. With --import the object may be a model of another format, which is converted here.
sdl::Setup parse_command_line(int argc, char **argv);
