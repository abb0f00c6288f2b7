// SPDX-License-Identifier: MIT
// The size of the widest vector, which the arrays of the fast forms are aligned to and padded by.
#pragma once

#include "display/frame_buffers.h"

#include <cstddef>
#include <cstdint>

namespace fast {

/// Bytes and 32-bit lanes of the widest vector. Narrower ones use the same arrays.
constexpr std::size_t vector_bytes = 64;
constexpr std::size_t vector_lanes = vector_bytes / sizeof(float);

/// The narrowest frame that is drawn on vectors. A vector that starts in the last drawn row may reach past
/// its end, into the `first_drawn_row` - 1 rows below it. Nothing is drawn there, and in frames of this width
/// or more those rows hold a whole vector of pixels.
constexpr std::int32_t least_width = vector_bytes / (first_drawn_row - 1) + 1;

} // namespace fast
