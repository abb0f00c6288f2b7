// SPDX-License-Identifier: MIT
// An input of the program target: the files of a run and what its user does.
#pragma once

#include "platform/offscreen/host.h"

#include <cstdint>
#include <string>

namespace fuzz {

/// In bytes: two big-endian 16-bit lengths, the object and the settings of these lengths, and the steps.
struct ProgramInput {
    std::string object;
    /// None if it is empty: the settings file is missing then.
    std::string settings;
    /// Four bytes each: what happens, how many passes later than the step before, and two bytes more.
    std::string steps;
};

/// What a step does. The two bytes are called a and b.
enum class Step : std::uint8_t {
    /// The key a.
    key,
    /// The cursor key a.
    cursor_key,
    /// A movement by 256 a + b, signed, along x if b is even, along y otherwise.
    move,
    right_button,
    left_button,
    /// The next requester is answered with a display of (a mod 128) x (b mod 96) pixels; an a of 255 is a
    /// huge or negative size.
    answer_mode,
    /// The next requester is answered with the file of number a.
    answer_file,
    cancel,
    /// The refusable call of this number, 256 a + b, is refused.
    refuse,
    count,
};

/// Takes an input apart; lengths beyond the end are cut.
ProgramInput unpack(const std::string &bytes);
std::string pack(const ProgramInput &input);

/// A step's four bytes.
std::string step(Step kind, int passes_later, int a, int b);

/// The host that the steps describe, with a display of a small size unless a requester says otherwise.
offscreen::Setup setup_for(const std::string &steps);

} // namespace fuzz
