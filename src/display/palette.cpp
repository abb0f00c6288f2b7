// SPDX-License-Identifier: MIT
// Computes the gamma-corrected grey ramp and loads it into the screen.
#include "display/palette.h"

#include "core/to_int.h"
#include "display/screen.h"
#include "main_68k/viewer_state.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace {

constexpr std::size_t palette_entries = 256;

/// The ramp as LoadRGB32 expects it: count and first entry, then three levels per entry in the top bits of a
/// word, then 0. Written by build_palette.
std::array<ULONG, 1 + 3 * palette_entries + 1> palette_table{};

ULONG channel_level(double brightness, double gamma) {
    return static_cast<ULONG>(to_int(std::pow(brightness, 1.0 / gamma) * 255.0)) << 24;
}

} // namespace

void build_palette() {
    const Gammas &gammas = viewer.gammas;
    std::size_t word = 0;
    palette_table[word++] = palette_entries << 16;
    for (std::size_t i = 0; i < palette_entries; ++i) {
        const double brightness = static_cast<double>(i) / 255.0;
        palette_table[word++] = channel_level(brightness, gammas.red);
        palette_table[word++] = channel_level(brightness, gammas.green);
        palette_table[word++] = channel_level(brightness, gammas.blue);
    }
    palette_table[word] = 0;
    LoadRGB32(&myscreen->ViewPort, palette_table.data());
    show_message("R-gamma:%1.2f G-gamma:%1.2f B-gamma:%1.2f", gammas.red, gammas.green, gammas.blue);
}
