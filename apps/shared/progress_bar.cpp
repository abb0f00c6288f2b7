// SPDX-License-Identifier: MIT
// Draws a growing line of hash signs, a few times per second.
#include "shared/progress_bar.h"

#include <cstdint>
#include <cstdio>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 1s;
constexpr auto interval = 100ms;
constexpr int bar_width = 40;

} // namespace

ProgressBar::ProgressBar(int how_many, std::string what)
    : count(how_many), counted(std::move(what)), is_terminal(isatty(STDERR_FILENO) == 1),
      next_drawing(Clock::now() + patience) {}

void ProgressBar::advance_to(int number) {
    if (!is_terminal || Clock::now() < next_drawing) {
        return;
    }
    next_drawing = Clock::now() + interval;
    is_drawn = true;
    const auto filled = static_cast<std::size_t>(std::int64_t{bar_width} * number / count);
    std::string bar(bar_width, '.');
    bar.replace(0, filled, filled, '#');
    std::fprintf(stderr, "\r[%s] %s %d of %d", bar.c_str(), counted.c_str(), number, count);
}

void ProgressBar::clear() {
    if (is_drawn) {
        std::fputs("\r\033[K", stderr);
    }
}
