// SPDX-License-Identifier: MIT
// The one conversion from floating point to integers.
#pragma once

#include <cstdint>
#include <limits>

/// Truncates toward zero and saturates at the ends of the 32-bit range. NaN gives the smallest integer, as
/// the PowerPC's conversion does. Every conversion of a float to an integer happens here; a float widens to
/// double exactly.
inline std::int32_t to_int(double value) {
    constexpr double largest = 2147483647.0;
    constexpr double smallest = -2147483648.0;
    if (value >= largest) {
        return std::numeric_limits<std::int32_t>::max();
    }
    if (value > smallest) {
        return static_cast<std::int32_t>(value);
    }
    return std::numeric_limits<std::int32_t>::min();
}
