// SPDX-License-Identifier: MIT
// How long the stages of a pass take: for the frame-rate counter, and for the lines printed at the end.
#pragma once

#include <array>
#include <cstddef>

/// The timed stages of a pass, as indices into the arrays below. The fifth entry is never written and stays
/// 0.
enum Stage : std::size_t { stage_render, stage_write, stage_overlay, stage_input, stage_unused, stage_count };

/// Number of frames begun. Written by the frame loop.
extern double frame_count;

/// Seconds that each stage took in the current pass; in the previous pass, if the stage has not ended yet.
extern std::array<double, stage_count> stage_seconds;

/// Seconds that each stage took in the whole run so far.
extern std::array<double, stage_count> stage_totals;

/// Sum of `stage_seconds`, some of which may still be those of the previous pass.
double pass_seconds();

/// Starts the clock of the next stage.
void start_stage_clock();

/// Ends a stage: sets its seconds, adds them to its total, and starts the clock of the next stage.
void end_stage(Stage stage);

/// Prints the number of frames, the total time, the average time per frame, and the average frame rate.
void print_run_statistics();
