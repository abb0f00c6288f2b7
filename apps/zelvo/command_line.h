// SPDX-License-Identifier: MIT
// The words of the shell, apart from those that ask about the program itself.
#pragma once

#include <string>
#include <vector>

/// The words that are for the program, in their order. Help, the version and the template are printed here,
/// which ends the process; so does a word that begins with "-" and is neither an option nor a file, with exit
/// code 2. All words after "--" are files.
std::vector<std::string> program_words(int argc, char **argv);
