// SPDX-License-Identifier: MIT
// Runs the program and measures its memory.
#pragma once

#include "core/sanitized.h"
#include "support/program_run.h"

#include <string>
#include <sys/resource.h>
#include <utility>

/// A run and its memory.
struct MeasuredRun {
    ProgramRun run;
    /// The largest resident memory, in MiB; 0 if the run did not report it.
    long resident_mib = 0;
};

inline MeasuredRun run_measured(offscreen::Setup setup, RunOptions options = {}) {
    options.at_end = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        note("resident " + std::to_string(usage.ru_maxrss / 1024));
    };
    MeasuredRun measured{run_program(std::move(setup), options)};
    for (const std::string &line : measured.run.notes) {
        if (line.starts_with("resident ")) {
            measured.resident_mib = std::stol(line.substr(9));
        }
    }
    return measured;
}
