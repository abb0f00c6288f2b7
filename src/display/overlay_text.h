// SPDX-License-Identifier: MIT
// The two texts over the picture: the message line and the frame-rate counter.
#pragma once

#include <array>

/// The frame-rate counter's readings in frames per second: entry 0 is the average that is shown, entries 1 to
/// 5 are the latest rates, newest first. All are 0 at the start and never reset. Written by draw_frame_rate.
extern std::array<double, 6> frame_rates;

/// Draws the message line at the top left while its timer is above 0, and subtracts `last_frame_time`
/// (seconds) from the timer.
void draw_message_line(double last_frame_time);

/// Adds a pass of `pass_seconds` to the readings and draws the average of the latest five at the bottom left,
/// at most ten characters.
void draw_frame_rate(double pass_seconds);
