// SPDX-License-Identifier: MIT
// A progress bar for long runs.
#pragma once

#include <chrono>
#include <string>

/// Drawn on standard error if that is a terminal and the run takes longer than a second.
class ProgressBar {
public:
    /// `what` names what the bar counts.
    ProgressBar(int how_many, std::string what);

    /// Updates the progress, counted from 1.
    void advance_to(int number);

    /// Erases the bar.
    void clear();

private:
    using Clock = std::chrono::steady_clock;

    int count;
    std::string counted;
    bool is_terminal;
    bool is_drawn = false;
    Clock::time_point next_drawing;
};
