// SPDX-License-Identifier: MIT
// The sizes that a host's screens can have.
#pragma once

#include <cstdint>

namespace host {

/// Pixels of a screen, each way.
constexpr std::int32_t smallest_side = 1;
constexpr std::int32_t largest_side = 16384;

/// Whether a screen can have a side of this many pixels.
constexpr bool is_possible_side(std::int32_t side) {
    return side >= smallest_side && side <= largest_side;
}

} // namespace host
