// SPDX-License-Identifier: MIT
// The palette: one grey ramp, bent by a gamma for each channel.
#pragma once

/// Loads the ramp for the state's gammas into the open screen, puts the gammas into the message line and
/// restarts its timer. Level i of a channel is 255 (i / 255)^(1 / gamma), truncated. A gamma of 0, which only
/// an edited settings file can bring, leaves the channel black but for index 255.
void build_palette();
