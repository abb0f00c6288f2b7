// SPDX-License-Identifier: MIT
// Work on a file that nobody knows, in a process of its own: it may crash, hang or take all memory, and the
// program that asked for it goes on.
#pragma once

#include "shared/resource_limits.h"

#include <functional>
#include <string>
#include <string_view>

/// How a process ended: by itself with a code, or by a signal, which is 0 otherwise.
struct ChildEnd {
    int exit_code;
    int signal;

    bool is_good() const { return exit_code == 0 && signal == 0; }
    bool took_too_long() const;
};

/// The exit code of work for which the memory was not enough.
constexpr int exit_out_of_memory = 3;

/// Why reading a file in a child process failed: the reason of the limit that was reached, or else that it
/// crashed or just failed.
std::string reason_of(const ChildEnd &end, const std::string &too_long, const std::string &too_much_memory);

/// Receives a message of the work: what kind it is, and its bytes.
using OnMessage = std::function<void(char kind, std::string &&bytes)>;

/// Runs the work in a new process within the limits, and waits for its end. The process cannot write to
/// files, and what it prints is lost; send_to_parent is its only output.
ChildEnd run_in_child(const ResourceLimits &limits, const std::function<void()> &work,
                      const OnMessage &on_message);

/// Sends a message, at most 2 GiB long, to the process that runs the work. Only for use in the work.
void send_to_parent(char kind, std::string_view bytes);
