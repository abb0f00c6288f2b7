// SPDX-License-Identifier: MIT
// Work on an untrusted file in a child process: it may crash, hang or use up its memory, and the program goes
// on.
#pragma once

#include "shared/resource_limits.h"

#include <functional>
#include <string>
#include <string_view>

/// How a process ended: by itself with a code, or by a signal. The other of the two is 0.
struct ChildEnd {
    int exit_code;
    int signal;

    bool is_good() const { return exit_code == 0 && signal == 0; }
    bool took_too_long() const;
};

/// The exit code of work that ran out of memory.
constexpr int exit_out_of_memory = 3;

/// Why reading a file in a child process failed: the reason of the limit that was reached, or else that it
/// crashed or just failed.
std::string reason_of(const ChildEnd &end, const std::string &too_long, const std::string &too_much_memory);

/// Receives a message of the work: its kind and its bytes.
using OnMessage = std::function<void(char kind, std::string &&bytes)>;

/// Runs the work in a new process within the limits, and waits for its end. The process cannot write to
/// files, and what it prints is lost; send_to_parent is its only output.
ChildEnd run_in_child(const ResourceLimits &limits, const std::function<void()> &work,
                      const OnMessage &on_message);

/// Sends a message of less than 2 GiB from the work to the process that waits for its end.
void send_to_parent(char kind, std::string_view bytes);
