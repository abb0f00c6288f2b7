// SPDX-License-Identifier: MIT
// A progress bar for runs that take a while.
#pragma once

#include <chrono>

/// Draws itself on standard error when that is a terminal and the run takes longer than a second.
class ProgressBar {
public:
    explicit ProgressBar(int all_passes);

    /// Notes that this pass was shown.
    void advance_to(int pass);

    /// Wipes the bar away.
    void clear();

private:
    using Clock = std::chrono::steady_clock;

    int passes;
    bool is_terminal;
    bool is_drawn = false;
    Clock::time_point next_drawing;
};
