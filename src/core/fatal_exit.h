// SPDX-License-Identifier: MIT
// Ends the program. It is declared in the lowest room, so that every room can call it, and defined in
// main_68k, which knows what every room must release. No other call goes upwards.
#pragma once

/// Exit codes of the program.
constexpr int exit_normal = 0;
constexpr int exit_failure = 20;

/// Releases everything that the program holds at this moment, prints `text` to standard output as it is, and
/// ends the process with code 20. Without a text it prints nothing and ends with code 0. It may be called at
/// any point of the run, since it releases only what is held.
[[noreturn]] void fatal_exit(const char *text = nullptr);
