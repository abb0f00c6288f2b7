// SPDX-License-Identifier: MIT
// Measures the stages with the system's elapsed-time clock, and prints the sums.
#include "main_68k/run_statistics.h"

#include "platform/lowlevel.h"

#include <cstdio>
#include <numeric>

double frame_count = 0.0;
std::array<double, stage_count> stage_seconds{};
std::array<double, stage_count> stage_totals{};

namespace {

/// The clock's previous reading, which all stages share.
EClockVal stage_clock{};

/// Seconds since the previous reading; the clock counts them in 16.16.
double read_clock() {
    return ElapsedTime(&stage_clock) / 65536.0;
}

} // namespace

double pass_seconds() {
    return stage_seconds[0] + stage_seconds[1] + stage_seconds[2] + stage_seconds[3] + stage_seconds[4];
}

void start_stage_clock() {
    read_clock();
}

void end_stage(Stage stage) {
    stage_seconds[stage] = read_clock();
    stage_totals[stage] += stage_seconds[stage];
}

void print_run_statistics() {
    const double total = std::accumulate(stage_totals.begin(), stage_totals.end(), 0.0);
    const double average = total / frame_count;
    std::printf("number of frames: %.0f\n", frame_count);
    std::printf("all time: %f  average frametime: %f\n", total, average);
    std::printf("average framerate: %f fps\n", 1.0 / average);
}
