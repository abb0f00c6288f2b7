// SPDX-License-Identifier: MIT
// The reference routines' own conversion from float to int, independent of the program's.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

/// Truncates toward zero and saturates; NaN gives the smallest integer.
inline std::int32_t reference_int(double value) {
    if (std::isnan(value)) {
        return std::numeric_limits<std::int32_t>::min();
    }
    return static_cast<std::int32_t>(std::clamp(std::trunc(value), -2147483648.0, 2147483647.0));
}
