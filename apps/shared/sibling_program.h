// SPDX-License-Identifier: MIT
// Runs another of these programs.
#pragma once

#include <optional>
#include <string>
#include <vector>

/// The program of this name in the folder of the one that runs, or just the name, for the one that a shell
/// would find.
std::string sibling_program(const std::string &name);

/// What becomes of what a program prints on standard output.
enum class Output { shown, hidden };

/// Runs a program with its arguments and waits for its end. Its exit code, which is -1 if a signal ended it.
/// Nothing if it cannot be started, with the reason in errno.
std::optional<int> run_program(std::vector<std::string> words, Output output = Output::shown);
