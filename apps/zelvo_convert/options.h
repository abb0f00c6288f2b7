// SPDX-License-Identifier: MIT
// The command line of zelvo-convert.
#pragma once

#include "conversion.h"

#include <optional>
#include <string>
#include <vector>

namespace convert {

struct Options {
    std::vector<std::string> inputs;
    std::optional<std::string> output;
    std::optional<std::string> folder;
    Wishes wishes;
    bool only_describes = false;
    bool opens_viewer = false;
    bool uses_cache = false;
    /// The limits on reading and converting one file: processor time and memory.
    double seconds = 120.0;
    std::size_t mebibytes = 2048;
};

/// Reads the command line. Help and version are printed and end the tool with code 0; an error ends it with
/// code 2 and its reason on standard error.
Options parse_options(int argc, char **argv);

} // namespace convert
