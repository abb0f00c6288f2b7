// SPDX-License-Identifier: MIT
// The two texts over the picture: the message line and the frame-rate counter.
#pragma once

#include <array>

/// The frame-rate counter's memory: entry 0 is the average shown, entries 1 to 5 are the latest rates, newest
/// first, in frames a second. All 0 at the start and never reset. Written by draw_frame_rate.
extern std::array<double, 6> frame_rates;

/// Draws the message line at the top left while its timer is above 0, and takes `last_frame_time` (seconds)
/// off it.
void draw_message_line(double last_frame_time);

/// Takes the rate of a pass of `pass_seconds` into the average of the latest five and draws it at the bottom
/// left, ten characters at the most.
void draw_frame_rate(double pass_seconds);
