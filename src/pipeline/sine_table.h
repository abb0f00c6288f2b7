// SPDX-License-Identifier: MIT
// The sine table of the dots effect.
#pragma once

#include <array>
#include <cstdint>

/// Entries of a full turn, and of the table, which holds one turn and a half.
constexpr int sine_period = 4096;
constexpr int sine_entries = sine_period + sine_period / 2;

/// Sines of i turns / 4096. Filled by preparation, read by the dots effect.
extern std::array<float, sine_entries> sine_table;

/// Fills the table.
void build_sine_table();

/// The sine of a number of 4096ths of a turn; any number wraps.
inline float sine(std::uint32_t angle) {
    return sine_table[angle % sine_period];
}

/// The cosine likewise.
inline float cosine(std::uint32_t angle) {
    return sine(angle + sine_period / 4);
}
