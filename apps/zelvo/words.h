// SPDX-License-Identifier: MIT
// The words of the shell, apart from those that ask about the program itself.
#pragma once

#include <string>
#include <vector>

/// The words that are for the program, in their order. Help, the version and the template are printed here,
/// which ends the process.
std::vector<std::string> program_words(int argc, char **argv);
