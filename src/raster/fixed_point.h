// SPDX-License-Identifier: MIT
// Numbers of the rasteriser: the one conversion from floating point, 16.16 fixed point, wrapping
// accumulators.
#pragma once

#include <cstdint>
#include <limits>

/// Truncates toward zero and saturates at the ends of the 32-bit range; NaN gives the smallest integer, as
/// the PowerPC's conversion does. Every float in the program becomes an integer here (a float widens
/// exactly).
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

/// A wrapping 32-bit accumulator; read with as_signed. Overflow is defined for it, and n steps are one
/// product.
using Fixed = std::uint32_t;

/// `value` in 16.16.
inline Fixed to_fixed(float value) {
    return static_cast<Fixed>(to_int(value * 65536.0));
}

/// The accumulator read as a signed number.
inline std::int32_t as_signed(Fixed value) {
    return static_cast<std::int32_t>(value);
}

/// The integer part of a 16.16 accumulator, rounded down.
inline std::int32_t integer_part(Fixed value) {
    return as_signed(value) >> 16;
}
