// SPDX-License-Identifier: MIT
// Puts a stream that remembers in the place of standard output.
#include "platform/sdl/unseen_output.h"

#include "platform/posix/standard_streams.h"
#include "platform/sdl/notice.h"
#include "platform/window/windowed_host.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace host {

namespace {

/// What was printed, from the last line on that has an end. Written by take_output.
std::string last_lines;

/// Whether the user ended the run. Written by note_good_end.
bool is_good_end = false;

ssize_t take_output(void *, const char *bytes, std::size_t count) {
    last_lines.append(bytes, count);
    // The line before the last one is over.
    const std::size_t last_end = last_lines.find_last_of('\n', last_lines.size() - 2);
    if (last_lines.size() > 1 && last_end != std::string::npos) {
        last_lines.erase(0, last_end + 1);
    }
    // Where it went before; that nobody sees it is no reason to lose it.
    (void)!write(STDOUT_FILENO, bytes, count);
    return static_cast<ssize_t>(count);
}

void show_failure() {
    std::fflush(stdout);
    if (!is_good_end && !last_lines.empty() && can_show_requesters()) {
        const std::string text = last_lines.substr(0, last_lines.find('\n'));
        show_notice("Zelvo: " + text, text, order_to_requester);
    }
}

} // namespace

void watch_unseen_output() {
    if (is_output_seen()) {
        return;
    }
    const cookie_io_functions_t functions{nullptr, take_output, nullptr, nullptr};
    if (std::FILE *stream = fopencookie(nullptr, "w", functions)) {
        stdout = stream;
        std::atexit(show_failure);
    }
}

void note_good_end() {
    is_good_end = true;
}

} // namespace host
