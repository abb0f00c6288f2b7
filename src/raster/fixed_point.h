// SPDX-License-Identifier: MIT
// 16.16 fixed point in accumulators that wrap.
#pragma once

#include "core/to_int.h"

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
