// SPDX-License-Identifier: MIT
// Runs another of these programs.
#pragma once

#include <optional>
#include <string>
#include <vector>

/// The path of the program of this name in the folder of the running one. If there is none, just the name, so
/// that run_program looks for it where a shell would.
std::string sibling_program(const std::string &name);

/// Runs a program with its arguments and waits for its end. Returns its exit code, or -1 if a signal ended
/// it. Returns nothing if it cannot be started, with the reason in errno.
std::optional<int> run_program(std::vector<std::string> words);

/// The same, but standard output goes into `printed`, and standard error is shown or dropped.
std::optional<int> run_program(std::vector<std::string> words, std::string &printed, bool shows_errors);
