// SPDX-License-Identifier: MIT
// The frame and the settings for a measurement.
#pragma once

#include "meshes.h"

/// Rotation steps of one measured turn.
constexpr int steps_per_turn = 360;

/// Opens frame buffers of this size, without a display, and fills the texture with smooth noise.
void open_frame(int width, int height);

/// Resets every setting and the object's rotation.
void reset_scene();

/// Turns the object by one step of a turn.
void next_step();
