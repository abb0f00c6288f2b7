// SPDX-License-Identifier: MIT
// Runs another of these programs.
#pragma once

#include <optional>
#include <string>
#include <vector>

/// The program of this name in the folder of the one that runs, or just the name, for the one that a shell
/// would find.
std::string sibling_program(const std::string &name);

/// Runs a program with its arguments and waits for its end. Its exit code, which is -1 if a signal ended it.
/// Nothing if it cannot be started, with the reason in errno.
std::optional<int> run_program(std::vector<std::string> words);

/// The same, but what the program prints on standard output goes into `printed`, and what it says on standard
/// error is lost unless it is shown.
std::optional<int> run_program(std::vector<std::string> words, std::string &printed, bool shows_errors);
