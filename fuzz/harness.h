// SPDX-License-Identifier: MIT
// Runs the program, or parts of it, many times in one process. The program's files are in memory, and its end
// returns to the caller.
#pragma once

#include "platform/offscreen/host.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace fuzz {

/// How the program ended.
struct Ending {
    int exit_code = 0;
};

/// The program's files, by the exact names that it asks for. It may write any of them. A target sets them
/// before a run and can read them afterwards.
extern std::map<std::string, std::string> files;

/// Larger requests for zeroed memory are refused, so that an input that only claims to be large costs little.
/// Other tests cover large objects.
constexpr std::size_t largest_allocation = 1 << 20;

/// Discards what the program prints; a target's messages go to standard error.
void silence_output();

/// Runs `part` of the program on a fresh host with this set-up and `files`, and with fresh program state,
/// until it returns or the program ends. If the program ends, its open files are closed, as at the end of a
/// process.
Ending run(offscreen::Setup setup, const std::function<void()> &part);

/// Allocates the frame buffers that drawing needs on a display of this size.
void open_frame(int width, int height);

/// Draws one frame in this mode and clear style, with the dots on, and exchanges the buffers.
void draw(int mode, int clear_style);

/// Ends the process with a report if `holds` is false.
void require(bool holds, const char *claim);

} // namespace fuzz

/// Called by libFuzzer and by the replay program.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// Whether a target makes all its checks with every input. Set by the replay program; a fuzzing run makes the
/// costly checks only with some inputs.
extern bool is_thorough;
