// SPDX-License-Identifier: MIT
// The sine table of the dots effect.
#pragma once

#include <array>
#include <cstdint>

/// Entries per full turn, and of the whole table, which covers one turn and a half.
constexpr int sine_period = 4096;
constexpr int sine_entries = sine_period + sine_period / 2;

/// Entry i is the sine of i / 4096 of a turn. Filled by prepare_object, read by the dots effect.
extern std::array<float, sine_entries> sine_table;

/// Fills the table, unless an earlier run in this process has.
void build_sine_table();

/// The sine of an angle in 4096ths of a turn; any angle wraps.
inline float sine(std::uint32_t angle) {
    return sine_table[angle % sine_period];
}

/// The cosine of such an angle.
inline float cosine(std::uint32_t angle) {
    return sine(angle + sine_period / 4);
}
