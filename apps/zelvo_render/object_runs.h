// SPDX-License-Identifier: MIT
// One run for each of several objects.
#pragma once

#include "options.h"

#include <vector>

/// Does each run in a process of its own, one after another, and ends the tool when all have ended: with
/// code 0, or with that of the first run that failed. When it is interrupted, the run under way ends as with
/// Esc, no other is started, and the code is 128 and the signal's number.
[[noreturn]] void run_all(const std::vector<Options> &runs, void (*run)(const Options &));
