// SPDX-License-Identifier: MIT
// Removes unfinished files and ends the process.
#include "failure.h"

#include "options.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <set>

namespace {

/// The files and folders to remove on failure.
std::set<std::string> &unfinished() {
    static std::set<std::string> paths;
    return paths;
}

} // namespace

void fail(const std::string &why) {
    std::fflush(stdout);
    std::fprintf(stderr, "zelvo-render: %s\n", why.c_str());
    for (const std::string &path : unfinished()) {
        std::error_code error;
        std::filesystem::remove_all(path, error);
    }
    // Not exit(), which would finish the other outputs.
    std::_Exit(exit_misuse);
}

void fail_on(const std::string &path) {
    const int error = errno;
    fail("cannot write " + path + ": " + std::strerror(error != 0 ? error : EIO));
}

void remove_on_failure(const std::string &path) {
    unfinished().insert(path);
}

void keep_on_failure(const std::string &path) {
    unfinished().erase(path);
}
