// SPDX-License-Identifier: MIT
// Runs parts of the program, or all of it, many times in one process: files in memory, an end that comes
// back.
#pragma once

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

/// The files that the program sees, by the exact name that it asks for; it may write any. Set by a target
/// before a run, and after one as the run left it.
extern std::map<std::string, std::string> files;

/// Requests for more zeroed memory than this are refused, so that an input that claims to be large costs no
/// more than one that is. Memory that is really large has tests of its own.
constexpr std::size_t largest_allocation = 1 << 20;

/// Sends what the program prints to nowhere; a target's messages go to standard error.
void silence_output();

/// Runs `part` of the program on fresh program state, until it returns or the program ends. Closes the files
/// that the program leaves open when it ends, as the end of a process would. `files` is kept.
Ending run(const std::function<void()> &part);

/// Allocates the frame buffers of a display of this size as far as drawing needs them.
void open_frame(int width, int height);

/// Draws one frame in this mode and clear style, with the dots on, and exchanges the buffers.
void draw(int mode, int clear_style);

/// What the program did for an input, as far as its cost grows with what the input claims: frames drawn, and
/// triangles that the plain form of a filler drew in them.
struct Work {
    std::int64_t frames = 0;
    std::int64_t triangles = 0;
};

/// Counted up by every run. Set to zeros by whoever wants to know what one input costs.
extern Work work;

/// Ends the process with a report if `holds` is false.
void require(bool holds, const char *claim);

} // namespace fuzz

/// What libFuzzer and the replay program call.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// Whether every input gets the long treatment of its target, which in a fuzzing run only some do. Set by the
/// replay program.
extern bool is_thorough;
