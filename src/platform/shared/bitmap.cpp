// SPDX-License-Identifier: MIT
// Drawing into a bitmap in memory.
#include "platform/shared/bitmap.h"

#include "platform/shared/font_8x8.h"

#include <algorithm>
#include <cstring>

BitMap::BitMap(int bitmap_width, int bitmap_height)
    : width(bitmap_width), height(bitmap_height),
      pixels(static_cast<std::size_t>(bitmap_width) * static_cast<std::size_t>(bitmap_height)) {}

namespace host {

namespace {

/// Draws one pixel of a glyph's cell if it lies inside the bitmap.
void draw_cell_pixel(const RastPort &context, int x, int y, bool is_set) {
    BitMap &bitmap = *context.BitMap;
    if (x < 0 || x >= bitmap.width || y < 0 || y >= bitmap.height) {
        return;
    }
    if (is_set || context.DrawMode == JAM2) {
        const std::size_t at = static_cast<std::size_t>(y) * static_cast<std::size_t>(bitmap.width) +
                               static_cast<std::size_t>(x);
        bitmap.pixels[at] = is_set ? context.FgPen : context.BgPen;
    }
}

void draw_glyph(const RastPort &context, char character) {
    const auto &rows = glyph_rows(character);
    for (int row = 0; row < glyph_height; ++row) {
        for (int column = 0; column < glyph_width; ++column) {
            const bool is_set = (rows[static_cast<std::size_t>(row)] >> (glyph_width - 1 - column) & 1) != 0;
            draw_cell_pixel(context, context.cp_x + column, context.cp_y - glyph_baseline + row, is_set);
        }
    }
}

} // namespace

void load_palette(Palette &palette, const ULONG *table) {
    while (const ULONG count = *table >> 16) {
        const ULONG first = *table++ & 0xFFFF;
        for (ULONG entry = first; entry < first + count; ++entry, table += 3) {
            if (entry < palette.size()) {
                for (std::size_t channel = 0; channel < 3; ++channel) {
                    palette[entry][channel] = static_cast<std::uint8_t>(table[channel] >> 24);
                }
            }
        }
    }
}

TrueColours true_colours(const Palette &palette) {
    TrueColours colours{};
    colours.are_grey = true;
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const auto [red, green, blue] = palette[i];
        colours.of_index[i] = 0xFF000000U | std::uint32_t{red} << 16 | std::uint32_t{green} << 8 | blue;
        colours.are_grey = colours.are_grey && red == green && green == blue;
        colours.levels[i] = blue;
    }
    return colours;
}

namespace plain {

void expand_pixels(const std::uint8_t *indices, std::uint32_t *pixels, std::size_t count,
                   const TrueColours &colours) {
    for (std::size_t p = 0; p < count; ++p) {
        pixels[p] = colours.of_index[indices[p]];
    }
}

} // namespace plain

void expand_palette(const BitMap &bitmap, const Palette &palette, std::uint32_t *pixels, int bytes_per_row) {
    const TrueColours colours = true_colours(palette);
    const auto width = static_cast<std::size_t>(bitmap.width);
    const std::size_t pixels_per_row = static_cast<std::size_t>(bytes_per_row) / sizeof *pixels;
    for (std::size_t y = 0; y < static_cast<std::size_t>(bitmap.height); ++y) {
        fast::expand_pixels(bitmap.pixels.data() + y * width, pixels + y * pixels_per_row, width, colours);
    }
}

void initialise_context(RastPort &context) {
    context = RastPort{nullptr, 255, 0, JAM2, 0, 0};
}

void draw_text(RastPort &context, const char *text, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i) {
        if (context.BitMap != nullptr) {
            draw_glyph(context, text[i]);
        }
        context.cp_x = static_cast<WORD>(context.cp_x + glyph_width);
    }
}

void write_pixels(RastPort &context, ULONG x_start, ULONG y_start, ULONG x_stop, ULONG y_stop,
                  const std::uint8_t *pixels, LONG bytes_per_row) {
    if (context.BitMap == nullptr) {
        return;
    }
    BitMap &bitmap = *context.BitMap;
    const std::int64_t x_end = std::min<std::int64_t>(std::int64_t{x_stop} + 1, bitmap.width);
    const std::int64_t y_end = std::min<std::int64_t>(std::int64_t{y_stop} + 1, bitmap.height);
    if (x_start >= x_end) {
        return;
    }
    const auto bytes = static_cast<std::size_t>(x_end - x_start);
    for (std::int64_t y = y_start; y < y_end; ++y) {
        std::memcpy(bitmap.pixels.data() + y * bitmap.width + x_start, pixels + (y - y_start) * bytes_per_row,
                    bytes);
    }
}

} // namespace host
