// SPDX-License-Identifier: MIT
// The project's own fixed-width 8 x 8 bitmap font, with which all hosts draw texts.

#pragma once

#include <array>
#include <cstdint>

namespace host {

constexpr int glyph_width = 8;
constexpr int glyph_height = 8;

/// The row of the baseline; only descenders and the underscore reach below it.
constexpr int glyph_baseline = 6;

/// Rows of the glyph of `character`, top first, bit 7 leftmost; any character outside printable ASCII
/// yields a hollow box.
std::array<std::uint8_t, 8> const &glyph_rows(char character);

} // namespace host
