// SPDX-License-Identifier: MIT
// An 8-bit picture in memory with its palette, and the drawing that the graphics calls need.
#pragma once

#include "platform/graphics.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Rows of one palette index per pixel, top row first, without padding; black at the start.
struct BitMap {
    BitMap(int bitmap_width, int bitmap_height);

    int width;
    int height;
    std::vector<std::uint8_t> pixels;
};

namespace host {

/// Red, green and blue, 0 .. 255.
using Colour = std::array<std::uint8_t, 3>;

/// The colour of each palette index.
using Palette = std::array<Colour, 256>;

/// Sets palette entries from a table in LoadRGB32's form; entries beyond the palette are dropped.
void load_palette(Palette &palette, const ULONG *table);

/// Writes the bitmap's pixels as opaque true colour, 0xAARRGGBB each, into rows of `bytes_per_row` bytes, a
/// multiple of four.
void expand_palette(const BitMap &bitmap, const Palette &palette, std::uint32_t *pixels, int bytes_per_row);

/// A palette as expand_pixels needs it.
struct TrueColours {
    /// The true colour of each palette index.
    std::array<std::uint32_t, 256> of_index;
    /// Whether red, green and blue of every colour are equal, and then this level of each index.
    bool are_grey;
    std::array<std::uint8_t, 256> levels;
};

TrueColours true_colours(const Palette &palette);

/// Both forms of writing `count` consecutive pixels as true colour.
namespace plain {
void expand_pixels(const std::uint8_t *indices, std::uint32_t *pixels, std::size_t count,
                   const TrueColours &colours);
} // namespace plain
#if ZELVO_SIMD
namespace fast {
void expand_pixels(const std::uint8_t *indices, std::uint32_t *pixels, std::size_t count,
                   const TrueColours &colours);
} // namespace fast
#else
namespace fast = plain;
#endif

/// Sets a drawing context to the system's defaults.
void initialise_context(RastPort &context);

/// Draws text at the context's pen with the 8 x 8 font, whose baseline is row 6 of its cell, and moves the
/// pen past it. Clipped at the bitmap's edges.
void draw_text(RastPort &context, const char *text, std::size_t length);

/// Copies the rectangle (x_start, y_start) to (x_stop, y_stop), both inclusive, from rows of `bytes_per_row`.
/// Clipped at the bitmap's edges.
void write_pixels(RastPort &context, ULONG x_start, ULONG y_start, ULONG x_stop, ULONG y_stop,
                  const std::uint8_t *pixels, LONG bytes_per_row);

} // namespace host
