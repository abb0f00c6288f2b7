// SPDX-License-Identifier: MIT
// Opens those of the first three descriptors that are closed, and finds out where they lead.
#include "platform/posix/standard_streams.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

void open_missing_standard_streams() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            // open() returns the lowest free number, which is this one: all lower ones are open by now.
            (void)open("/dev/null", O_RDWR);
        }
    }
}

bool is_output_seen() {
    if (isatty(STDIN_FILENO) != 0 || isatty(STDOUT_FILENO) != 0 || isatty(STDERR_FILENO) != 0) {
        return true;
    }
    struct stat status {};
    if (fstat(STDOUT_FILENO, &status) != 0) {
        return false;
    }
    std::error_code error;
    return S_ISFIFO(status.st_mode) ||
           (S_ISREG(status.st_mode) &&
            !is_session_log(std::filesystem::read_symlink("/proc/self/fd/1", error).string()));
}

bool is_session_log(const std::string &path) {
    // Of the X session scripts, and of a display manager that is used with KDE.
    constexpr std::array<const char *, 3> names{".xsession-errors", "xorg-session.log",
                                                "wayland-session.log"};
    return std::ranges::find(names, std::filesystem::path(path).filename().string()) != names.end();
}

} // namespace host
