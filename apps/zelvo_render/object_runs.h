// SPDX-License-Identifier: MIT
// One run for each of several objects.
#pragma once

#include "options.h"

#include <vector>

/// Runs one process per object, one after another, and then ends the tool with code 0 or that of the first
/// run that failed. If the tool is interrupted, the current run ends as with Esc, no other is started, and
/// the code is 128 plus the signal's number.
[[noreturn]] void run_all(const std::vector<Options> &runs, void (*run)(const Options &));
