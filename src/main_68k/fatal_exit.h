// SPDX-License-Identifier: MIT
// The one way out of the program.
#pragma once

/// Exit codes of the program.
constexpr int exit_normal = 0;
constexpr int exit_failure = 20;

/// Releases everything that the program holds at this moment, prints `text` to standard output as it stands,
/// and ends the process with code 20; without a text it prints nothing and ends with code 0. Correct at every
/// point of the run, since only what is held is released.
[[noreturn]] void fatal_exit(const char *text = nullptr);
