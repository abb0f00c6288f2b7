// SPDX-License-Identifier: MIT
// Floats as the bits that two forms of a stage must agree in.
#pragma once

#include "core/heap_array.h"
#include "main_68k/viewer_state.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

/// A number's bits; a not-a-number is one whatever its sign and payload, which the processors' own rules
/// choose.
inline std::uint32_t bits_of(float value) {
    return value != value ? 0x7FC00000U : std::bit_cast<std::uint32_t>(value);
}

inline std::vector<std::uint32_t> bits_of(const float *values, std::size_t count) {
    std::vector<std::uint32_t> bits;
    bits.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        bits.push_back(bits_of(values[i]));
    }
    return bits;
}

inline std::vector<std::uint32_t> bits_of(const HeapArray<Vec3> &records, std::size_t count) {
    return bits_of(&records[0].x, 3 * count);
}
