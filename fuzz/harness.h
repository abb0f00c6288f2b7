// SPDX-License-Identifier: MIT
// Runs the program, or parts of it, many times in one process: its files are in memory, and its end returns
// to the caller.
#pragma once

#include "platform/offscreen/host.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace fuzz {

/// What the program did at its end.
struct Ending {
    int exit_code = 0;
};

/// The files that the program sees, by the exact name that it asks for; it may write any. A target sets them
/// before a run, and finds them afterwards as the run left them.
extern std::map<std::string, std::string> files;

/// Larger requests for zeroed memory are refused, so that an input that only claims to be large is not
/// costly. Other tests cover large objects.
constexpr std::size_t largest_allocation = 1 << 20;

/// Discards what the program prints; a target's messages go to standard error.
void silence_output();

/// Runs `part` of the program on a fresh host with this set-up and `files`, and on fresh program state, until
/// it returns or the program ends. Closes the files that the program leaves open when it ends, as the end of
/// a process would.
Ending run(offscreen::Setup setup, const std::function<void()> &part);

/// Allocates the frame buffers of a display of this size as far as drawing needs them.
void open_frame(int width, int height);

/// Draws one frame in this mode and clear style, with the dots on, and exchanges the buffers.
void draw(int mode, int clear_style);

/// Ends the process with a report if `holds` is false.
void require(bool holds, const char *claim);

} // namespace fuzz

/// What libFuzzer and the replay program call.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// Whether a target does all it can with every input; in a fuzzing run it does so only with some. Set by the
/// replay program.
extern bool is_thorough;
