// SPDX-License-Identifier: MIT
// Input scripts: events and requester answers, one per line of text.
#pragma once

#include "platform/offscreen/host.h"

#include <istream>
#include <string>

namespace offscreen {

/// Why a script cannot be used, and in which line (counted from 1).
struct ScriptError {
    int line = 0;
    std::string message;
};

/// Reads a script into `setup`, events ordered by pass and within a pass as in the script:
///
///     PASS key C             a translated key: one character, or its code as 0xNN
///     PASS rawkey 0xNN       a raw key
///     PASS move DX DY        relative mouse movement, -32768 .. 32767 each
///     PASS button left       a button pressed, left or right
///     answer file DRAWER NAME
///     answer mode ID WIDTH HEIGHT
///     answer cancel
///     object NAME            the command line
///     file NAME PATH         what is opened under a name; nothing if the path is empty
///     env TEXT               a line of the settings file of ENV:, and
///     envarc TEXT            of that of ENVARC:
///     passes N               the last pass
///     frames N SUM           the sum of the first N frames, to compare with
///
/// A drawer or name in double quotes may contain blanks or be empty. Empty lines and lines that begin with #
/// are skipped. Returns nothing for a well-formed script; otherwise returns the first error and leaves
/// `setup` alone.
/// What a script does not say stays as it is in `setup`, but events and answers are replaced.
std::optional<ScriptError> read_script(std::istream &script, Setup &setup);

} // namespace offscreen
