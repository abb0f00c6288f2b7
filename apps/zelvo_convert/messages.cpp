// SPDX-License-Identifier: MIT
// Sends texts and numbers to the tool's own process.
#include "messages.h"

#include "shared/child_process.h"

#include <unistd.h>

namespace convert {

void send_progress(int percent) {
    const auto byte = static_cast<char>(percent);
    send_to_parent(progress_message, {&byte, 1});
}

void send_summary(const std::string &line) {
    send_to_parent(summary_message, line);
}

void send_note(const std::string &line) {
    send_to_parent(note_message, line);
}

void note_if(std::size_t count, const std::string &noun, const std::string &what) {
    if (count != 0) {
        send_note(counted(count, noun) + " " + what);
    }
}

void refuse(const std::string &why) {
    send_to_parent(failure_message, why);
    _exit(exit_failure);
}

std::string counted(std::size_t count, const std::string &noun) {
    std::string digits = std::to_string(count);
    constexpr std::size_t group = 3;
    for (std::size_t at = digits.size(); at > group;) {
        at -= group;
        digits.insert(at, ",");
    }
    return digits + " " + noun + (count == 1 ? "" : "s");
}

} // namespace convert
