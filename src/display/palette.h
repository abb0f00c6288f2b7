// SPDX-License-Identifier: MIT
// The palette: a grey ramp with a gamma for each channel.
#pragma once

/// Loads the ramp for the state's gammas into the open screen and shows the gammas on the message line. Level
/// i of a channel is 255 (i / 255)^(1 / gamma), truncated. With a gamma of 0, which only an edited settings
/// file can set, the channel is black except at index 255.
void build_palette();
