// SPDX-License-Identifier: MIT
// A progress bar for runs that take a while.
#pragma once

#include <chrono>
#include <string>

/// Draws itself on standard error when that is a terminal and the run takes longer than a second.
class ProgressBar {
public:
    /// `what` names what the bar counts.
    ProgressBar(int how_many, std::string what);

    /// Notes how far the run is, counted from 1.
    void advance_to(int number);

    /// Wipes the bar away.
    void clear();

private:
    using Clock = std::chrono::steady_clock;

    int count;
    std::string counted;
    bool is_terminal;
    bool is_drawn = false;
    Clock::time_point next_drawing;
};
