// SPDX-License-Identifier: MIT
// Ends the process with a line on standard error, also for the rooms of the program that call fatal_exit.
#include "failure.h"

#include "core/fatal_exit.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

/// What the file is called that a failure is about, with what separates it from the reason.
std::string failing_file;

} // namespace

void set_failing_file(const std::string &path) {
    failing_file = path.empty() ? "" : path + ": ";
}

void fail(int exit_code, std::string why) {
    why = failing_file + why;
    const auto is_control = [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; };
    std::replace_if(why.begin(), why.end(), is_control, '?');
    std::fprintf(stderr, "zelvo-thumbnailer: %s\n", why.c_str());
    std::_Exit(exit_code);
}

// In place of the viewer's own, which releases a display and prints to standard output.
void fatal_exit(const char *text) {
    std::string_view reason = text != nullptr ? text : "ended";
    if (reason.ends_with('\n')) {
        reason.remove_suffix(1);
    }
    fail(exit_no_picture, std::string(reason));
}
