// SPDX-License-Identifier: MIT
// An input of the program target: the files of a run and its user's actions.
#pragma once

#include "platform/offscreen/host.h"

#include <cstdint>
#include <string>

namespace fuzz {

/// As bytes: two big-endian 16-bit lengths, the object and the settings with these lengths, and the steps.
struct ProgramInput {
    std::string object;
    /// If it is empty there is no settings file.
    std::string settings;
    /// Four bytes each: the kind of step, how many passes it comes after the step before, and two more bytes.
    std::string steps;
};

/// The kinds of steps. The last two bytes of a step are called a and b.
enum class Step : std::uint8_t {
    /// The key a.
    key,
    /// The cursor key a.
    cursor_key,
    /// A mouse movement by 256 a + b, signed: along x if b is even, otherwise along y.
    move,
    right_button,
    left_button,
    /// The next requester is answered with a display of (a mod 128) x (b mod 96) pixels; if a is 255, with a
    /// huge or negative size.
    answer_mode,
    /// The next requester is answered with file number a.
    answer_file,
    cancel,
    /// The refusable call number 256 a + b is refused.
    refuse,
    count,
};

/// Splits an input into its parts. Lengths past the end are cut.
ProgramInput unpack(const std::string &bytes);
std::string pack(const ProgramInput &input);

/// The four bytes of a step.
std::string step(Step kind, int passes_later, int a, int b);

/// The host's set-up that the steps describe. The display is small unless a requester chooses another size.
offscreen::Setup setup_for(const std::string &steps);

} // namespace fuzz
