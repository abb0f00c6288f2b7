// SPDX-License-Identifier: MIT
// The command line of zelvo-envmap.
#pragma once

#include "sphere_map.h"

#include <optional>
#include <string>

namespace envmap {

struct Options {
    std::string input;
    std::string output;
    Kind kind = Kind::photograph;
    double turn = 0.0;
    double exposure = 0.0;
    double contrast = 1.0;
    double blur = 0.0;
    std::optional<std::string> preview;
    bool makes_png = false;
};

/// Reads the command line. Help and version are printed and end the tool with code 0; an error ends it with
/// code 2 and its reason on standard error.
Options parse_options(int argc, char **argv);

} // namespace envmap
