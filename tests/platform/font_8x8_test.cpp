// SPDX-License-Identifier: MIT
// Tests of properties that all characters of the bitmap font share.
#include "platform/shared/font_8x8.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

using host::glyph_rows;

TEST(Font, EveryPrintableCharacterHasItsOwnShape) {
    std::set<std::array<std::uint8_t, 8>> shapes;
    for (char character = ' '; character <= '~'; ++character) {
        shapes.insert(glyph_rows(character));
    }
    EXPECT_EQ(shapes.size(), 95U);
}

TEST(Font, BlankIsEmpty) {
    EXPECT_EQ(glyph_rows(' '), (std::array<std::uint8_t, 8>{}));
}

TEST(Font, OtherCharactersAreTheSameHollowBox) {
    const auto &box = glyph_rows('\n');
    EXPECT_EQ(glyph_rows('\0'), box);
    EXPECT_EQ(glyph_rows('\x7F'), box);
    EXPECT_EQ(glyph_rows('\xE9'), box);
    EXPECT_EQ(glyph_rows('\xFF'), box);
    EXPECT_NE(box, glyph_rows(' '));
}

TEST(Font, LettersAreOnTheBaseline) {
    for (const char character : std::string("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcdefhiklmnorstuvwxz")) {
        EXPECT_NE(glyph_rows(character)[host::glyph_baseline], 0) << character;
        EXPECT_EQ(glyph_rows(character)[host::glyph_baseline + 1], 0) << character;
    }
}

TEST(Font, DescendersReachBelowTheBaseline) {
    for (const char character : std::string("gjpqy_,;")) {
        EXPECT_NE(glyph_rows(character)[host::glyph_baseline + 1], 0) << character;
    }
}

TEST(Font, NeighbouringLettersNeverTouch) {
    for (char character = ' '; character <= '~'; ++character) {
        for (const std::uint8_t row : glyph_rows(character)) {
            EXPECT_TRUE((row & 1) == 0 || character == '_') << character;
        }
    }
}
