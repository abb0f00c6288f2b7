// SPDX-License-Identifier: MIT
// The bits of floats, in which two forms of a stage must agree.
#pragma once

#include "core/heap_array.h"
#include "main_68k/viewer_state.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

/// A number's bits. All NaNs give the same bits, because their sign and payload depend on the processor.
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
