// SPDX-License-Identifier: MIT
// How long the stages of a pass take, for the frame-rate counter and for the lines printed at the end.
#pragma once

#include <array>
#include <cstddef>

/// The timed stages of a pass, as indices into the durations. The fifth slot is never written and stays 0.
enum Stage : std::size_t { stage_render, stage_write, stage_overlay, stage_input, stage_unused, stage_count };

/// Frames begun.
extern double frame_count;

/// Seconds that each stage of the current pass took; a stage that has not run yet holds the previous pass's.
extern std::array<double, stage_count> stage_seconds;

/// Seconds that each stage took in the whole run.
extern std::array<double, stage_count> stage_totals;

/// Sum of the stages' seconds as they stand.
double pass_seconds();

/// Starts the clock of the next stage.
void start_stage_clock();

/// Ends a stage: reads the clock into the stage's slot and adds it to its total.
void end_stage(Stage stage);

/// Prints the number of frames, the total and the average time, and the average frame rate.
void print_run_statistics();
