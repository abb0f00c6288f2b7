// SPDX-License-Identifier: MIT
// Tests of drawing into a bitmap: palettes, text, and rectangles of pixels.
#include "platform/shared/bitmap.h"

#include "platform/shared/font_8x8.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <numeric>

namespace {

class Bitmap : public testing::Test {
protected:
    Bitmap() {
        host::initialise_context(context);
        context.BitMap = &bitmap;
    }

    int at(int x, int y) const { return bitmap.pixels[static_cast<std::size_t>(y * bitmap.width + x)]; }

    void fill(std::uint8_t value) { std::fill(bitmap.pixels.begin(), bitmap.pixels.end(), value); }

    void draw(int x, int y, const char *text) {
        context.cp_x = static_cast<WORD>(x);
        context.cp_y = static_cast<WORD>(y);
        host::draw_text(context, text, std::strlen(text));
    }

    /// Checks the pixels of a glyph's cell whose top left corner is at (x, y).
    void expect_cell(int x, int y, char character, int ink, int paper) const {
        for (int row = 0; row < 8; ++row) {
            for (int column = 0; column < 8; ++column) {
                const bool is_set =
                    (host::glyph_rows(character)[static_cast<std::size_t>(row)] >> (7 - column) & 1) != 0;
                ASSERT_EQ(at(x + column, y + row), is_set ? ink : paper) << column << ", " << row;
            }
        }
    }

    BitMap bitmap{40, 20};
    RastPort context{};
};

using DrawText = Bitmap;
using WritePixels = Bitmap;

} // namespace

TEST_F(Bitmap, StartsBlack) {
    EXPECT_EQ(bitmap.pixels, std::vector<std::uint8_t>(800));
}

TEST_F(Bitmap, NewContextHasTheSystemsDefaults) {
    RastPort fresh{&bitmap, 1, 2, JAM1, 3, 4};
    host::initialise_context(fresh);
    EXPECT_EQ(fresh.BitMap, nullptr);
    EXPECT_EQ(fresh.FgPen, 255);
    EXPECT_EQ(fresh.BgPen, 0);
    EXPECT_EQ(fresh.DrawMode, JAM2);
    EXPECT_EQ(fresh.cp_x, 0);
    EXPECT_EQ(fresh.cp_y, 0);
}

TEST_F(DrawText, AtYTenCoversRowsFourToEleven) {
    fill(7);
    draw(1, 10, "A");
    expect_cell(1, 4, 'A', 255, 0);
    for (int x = 0; x < 40; ++x) {
        EXPECT_EQ(at(x, 3), 7);
        EXPECT_EQ(at(x, 12), 7);
    }
    EXPECT_EQ(at(0, 8), 7);
    EXPECT_EQ(at(9, 8), 7);
}

TEST_F(DrawText, AdvancesByEightPixelsPerCharacter) {
    draw(3, 10, "Zx");
    expect_cell(3, 4, 'Z', 255, 0);
    expect_cell(11, 4, 'x', 255, 0);
    EXPECT_EQ(context.cp_x, 19);
    EXPECT_EQ(context.cp_y, 10);
}

TEST_F(DrawText, DrawsNoMoreThanItsLength) {
    fill(7);
    context.cp_x = 0;
    context.cp_y = 10;
    host::draw_text(context, "AB", 1);
    expect_cell(0, 4, 'A', 255, 0);
    expect_cell(8, 4, ' ', 7, 7);
}

TEST_F(DrawText, PaintsWithTheContextsPens) {
    context.FgPen = 17;
    context.BgPen = 4;
    draw(0, 10, "g");
    expect_cell(0, 4, 'g', 17, 4);
}

TEST_F(DrawText, Jam1LeavesTheBackgroundAlone) {
    fill(7);
    context.DrawMode = JAM1;
    draw(0, 10, "g");
    expect_cell(0, 4, 'g', 255, 7);
}

TEST_F(DrawText, IsClippedAtEveryEdge) {
    context.BgPen = 9;
    for (const int x : {-100, -8, -4, 36, 40, 1000}) {
        for (const int y : {-50, -2, 0, 3, 19, 26, 500}) {
            draw(x, y, "M");
        }
    }
    // Four columns of the cells at x = -4 and x = 36 are inside. At y = 3 the cell begins in row -3.
    EXPECT_EQ(at(3, 0), 9);
    EXPECT_EQ(at(4, 0), 0);
    EXPECT_EQ(at(35, 0), 0);
    EXPECT_NE(at(36, 0), 0);
    EXPECT_EQ(at(3, 4), 9);
    EXPECT_EQ(at(3, 5), 0);
}

TEST_F(DrawText, PastTheRightEdgeDoesNotContinueInTheNextRow) {
    fill(7);
    draw(33, 10, "M");
    EXPECT_NE(at(39, 5), 7);
    for (int y = 0; y < 20; ++y) {
        EXPECT_EQ(at(0, y), 7) << y;
    }
}

TEST_F(DrawText, WithoutABitmapOnlyMovesThePen) {
    context.BitMap = nullptr;
    draw(5, 10, "abc");
    EXPECT_EQ(context.cp_x, 29);
    EXPECT_EQ(bitmap.pixels, std::vector<std::uint8_t>(800));
}

TEST_F(WritePixels, RectangleIncludesItsLastRowAndColumn) {
    std::vector<std::uint8_t> pixels(12);
    std::iota(pixels.begin(), pixels.end(), std::uint8_t{1});
    host::write_pixels(context, 5, 6, 8, 8, pixels.data(), 4);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 40; ++x) {
            const bool is_inside = x >= 5 && x <= 8 && y >= 6 && y <= 8;
            ASSERT_EQ(at(x, y), is_inside ? 1 + (x - 5) + 4 * (y - 6) : 0) << x << ", " << y;
        }
    }
}

TEST_F(WritePixels, RowsOfTheSourceMayBeLongerThanTheRectangle) {
    std::vector<std::uint8_t> pixels(30);
    std::iota(pixels.begin(), pixels.end(), std::uint8_t{1});
    host::write_pixels(context, 0, 0, 1, 2, pixels.data(), 10);
    EXPECT_EQ(at(0, 1), 11);
    EXPECT_EQ(at(1, 2), 22);
    EXPECT_EQ(at(2, 0), 0);
}

TEST_F(WritePixels, IsClippedAtTheRightAndTheBottom) {
    const std::vector<std::uint8_t> pixels(100, 5);
    host::write_pixels(context, 35, 15, 44, 24, pixels.data(), 10);
    EXPECT_EQ(at(39, 19), 5);
    EXPECT_EQ(at(35, 15), 5);
    EXPECT_EQ(at(0, 16), 0);
    host::write_pixels(context, 40, 0, 49, 9, pixels.data(), 10);
    EXPECT_EQ(at(0, 1), 0);
    host::write_pixels(context, 41, 0, 49, 9, pixels.data(), 9);
    EXPECT_EQ(at(1, 1), 0);
    host::write_pixels(context, 5, 0, 4, 9, pixels.data(), 10);
    host::write_pixels(context, 5, 0, 3, 9, pixels.data(), 10);
    EXPECT_EQ(at(5, 0), 0) << "a rectangle of no columns";
    host::write_pixels(context, 0, 20, 9, 29, pixels.data(), 10);
    EXPECT_EQ(at(0, 19), 0);
}

TEST_F(WritePixels, WithoutABitmapWritesNothing) {
    context.BitMap = nullptr;
    const std::uint8_t pixel = 5;
    host::write_pixels(context, 0, 0, 0, 0, &pixel, 1);
    EXPECT_EQ(at(0, 0), 0);
}

TEST(LoadPalette, UsesTheTopByteOfEachLevel) {
    host::Palette palette{};
    const std::array<ULONG, 8> table{2U << 16 | 10, 0x11FFFFFF, 0x22000000, 0x33333333,
                                     0xFF000000,    0x80000000, 0x7FFFFFFF, 0};
    host::load_palette(palette, table.data());
    EXPECT_EQ(palette[10], (host::Colour{0x11, 0x22, 0x33}));
    EXPECT_EQ(palette[11], (host::Colour{0xFF, 0x80, 0x7F}));
    EXPECT_EQ(palette[9], host::Colour{});
    EXPECT_EQ(palette[12], host::Colour{});
}

TEST(LoadPalette, LoadsRangesUntilTheEnd) {
    host::Palette palette{};
    const std::array<ULONG, 9> table{1U << 16 | 255, ~0U,        ~0U,        ~0U, 1U << 16 | 0,
                                     0x01000000,     0x02000000, 0x03000000, 0};
    host::load_palette(palette, table.data());
    EXPECT_EQ(palette[255], (host::Colour{255, 255, 255}));
    EXPECT_EQ(palette[0], (host::Colour{1, 2, 3}));
}

TEST(LoadPalette, DropsEntriesBeyondThePalette) {
    struct {
        host::Palette palette{};
        std::array<host::Colour, 4> after{};
    } memory;
    host::Palette &palette = memory.palette;
    const std::array<ULONG, 12> table{2U << 16 | 255, ~0U,        ~0U,        ~0U,        ~0U, ~0U, ~0U,
                                      1U << 16 | 3,   0x09000000, 0x08000000, 0x07000000, 0};
    host::load_palette(palette, table.data());
    EXPECT_EQ(palette[255], (host::Colour{255, 255, 255}));
    EXPECT_EQ(palette[0], host::Colour{});
    EXPECT_EQ(palette[3], (host::Colour{9, 8, 7})) << "the next range is read from the right place";
    EXPECT_EQ(memory.after, (std::array<host::Colour, 4>{}));
}

TEST(TrueColour, IsOpaqueAndLeavesThePaddingOfRowsAlone) {
    BitMap picture(3, 2);
    std::iota(picture.pixels.begin(), picture.pixels.end(), std::uint8_t{250});
    host::Palette palette{};
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const auto value = static_cast<std::uint8_t>(i);
        palette[i] = {value, static_cast<std::uint8_t>(value ^ 0x55), static_cast<std::uint8_t>(255 - value)};
    }
    std::array<std::uint32_t, 8> pixels{};
    pixels.fill(7);
    host::expand_palette(picture, palette, pixels.data(), 4 * 4);
    EXPECT_EQ(pixels, (std::array<std::uint32_t, 8>{0xFFFAAF05, 0xFFFBAE04, 0xFFFCA903, 7, 0xFFFDA802,
                                                    0xFFFEAB01, 0xFFFFAA00, 7}));
}
