// SPDX-License-Identifier: MIT
// The command line of zelvo, without the options that ask about the program itself.
#pragma once

#include <string>
#include <vector>

/// The words for the program, in order. Options for help, the version and the template print it and end the
/// process. A word that begins with "-" and is neither an option nor a file ends it with exit code 2. All
/// words after "--" are files.
std::vector<std::string> program_words(int argc, char **argv);
