// SPDX-License-Identifier: MIT
// Ends the process with a line on standard error, also for the rooms of the program that call fatal_exit.
#include "failure.h"

#include "core/fatal_exit.h"
#include "shared/tool_files.h"

#include <cstdio>
#include <cstdlib>

namespace {

/// What comes before the reason of a failure: the file's name and a colon. Written by set_failing_file.
std::string failing_file;

} // namespace

void set_failing_file(const std::string &path) {
    failing_file = path.empty() ? "" : path + ": ";
}

void fail(int exit_code, const std::string &why) {
    std::fprintf(stderr, "zelvo-thumbnailer: %s\n", printable(failing_file + why).c_str());
    std::_Exit(exit_code);
}

// In place of the viewer's own, which releases a display and prints to standard output.
void fatal_exit(const char *text) {
    fail(exit_no_picture, one_line(text != nullptr ? text : "ended"));
}
