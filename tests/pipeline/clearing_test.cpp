// SPDX-License-Identifier: MIT
// Tests of clearing, fading and blurring the frame.
#include "pipeline/clearing.h"

#include "support/frame_copies.h"
#include "support/model_builder.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace {

using Bytes = std::vector<std::uint8_t>;

class Clearing : public testing::Test {
protected:
    void SetUp() override { reset_program_state(); }

    /// Sets a frame of this size that is 77 everywhere, and a black previous one.
    static void set_frames(int width, int height) {
        set_frame(width, height);
        std::fill_n(chunkybuf1.get(), frame_pixels(), std::uint8_t{77});
    }

    static std::uint8_t &previous(int x, int y) { return chunkybuf2[pixel_index(x, y)]; }

    static void clear_with_style(std::int32_t style) {
        viewer.clear_style = style;
        clear_frame();
    }

    static void set_random_previous() {
        std::mt19937 random(23);
        for (std::size_t i = 0; i < frame_pixels(); ++i) {
            chunkybuf2[i] = static_cast<std::uint8_t>(random());
        }
    }

    /// The mean of the four neighbours of the previous frame's pixel number `at`, darkened.
    static std::uint8_t blurred(std::size_t at) {
        const auto width = static_cast<std::size_t>(frame_width);
        const int sum =
            chunkybuf2[at - 1] + chunkybuf2[at + 1] + chunkybuf2[at - width] + chunkybuf2[at + width];
        const int value = sum / 4 - sum / 64 - 1;
        return static_cast<std::uint8_t>(value < 0 ? 0 : value);
    }
};

using ZeroBlocks = Clearing;
using ClearFrame = Clearing;
using FadeFrame = Clearing;
using BlurFrame = Clearing;
using RisingBlur = Clearing;

} // namespace

TEST_F(ZeroBlocks, WritesOnlyWholeBlocksOfSixteenBytes) {
    for (const std::int32_t count : {16, 17, 31, 32, 40}) {
        Bytes bytes(64, 9);
        zero_blocks(bytes.data(), count);
        const auto zeroed = static_cast<std::size_t>(count / 16 * 16);
        Bytes expected(64, 9);
        std::fill_n(expected.begin(), zeroed, std::uint8_t{0});
        EXPECT_EQ(bytes, expected) << count;
    }
}

TEST_F(ZeroBlocks, CountBelowSixteenWritesNothing) {
    for (const std::int32_t count : {15, 1, 0, -1, -16, -1000}) {
        Bytes bytes(64, 9);
        zero_blocks(bytes.data(), count);
        EXPECT_EQ(bytes, Bytes(64, 9)) << count;
    }
}

TEST_F(ClearFrame, BlackensTheFrame) {
    set_frames(64, 16);
    clear_with_style(0);
    EXPECT_EQ(frame_bytes(), Bytes(1024));
}

TEST_F(ClearFrame, LeavesTheRemainderOfAFrameThatIsNotAMultipleOfSixteen) {
    // 100 x 15 pixels are 93 blocks and 12 bytes.
    set_frames(100, 15);
    clear_with_style(0);
    Bytes expected(1500);
    std::fill(expected.end() - 12, expected.end(), std::uint8_t{77});
    EXPECT_EQ(frame_bytes(), expected);
}

TEST_F(ClearFrame, LeavesTheFrameAloneForAnyOtherStyle) {
    set_frames(40, 20);
    set_random_previous();
    for (const std::int32_t style : {4, -1, 1000000}) {
        clear_with_style(style);
        EXPECT_EQ(frame_bytes(), Bytes(800, 77)) << style;
    }
}

TEST_F(ClearFrame, DoesNotTouchThePreviousFrame) {
    set_frames(40, 20);
    set_random_previous();
    const Bytes before(chunkybuf2.get(), chunkybuf2.get() + frame_pixels());
    for (std::int32_t style = 0; style <= 4; ++style) {
        clear_with_style(style);
        EXPECT_EQ(Bytes(chunkybuf2.get(), chunkybuf2.get() + frame_pixels()), before) << style;
    }
}

TEST_F(ClearFrame, UsesTheSizeOfTheOpenDisplay) {
    set_frames(40, 20);
    viewer.width = 16;
    viewer.height = 1;
    clear_with_style(0);
    EXPECT_EQ(frame_bytes(), Bytes(800));
}

TEST_F(Clearing, DepthsAreAlsoClearedInBlocks) {
    // 1500 depths are 3000 bytes, 187 blocks and 8 bytes.
    set_frames(100, 15);
    std::fill_n(zbuf.get(), frame_pixels(), std::uint16_t{0x1234});
    clear_zbuffer();
    std::vector<std::uint16_t> expected(1500);
    std::fill(expected.end() - 4, expected.end(), std::uint16_t{0x1234});
    EXPECT_EQ(frame_depths(), expected);
}

TEST_F(FadeFrame, SubtractsASixteenthAndOne) {
    set_frames(16, 3);
    const std::array<std::pair<int, int>, 9> cases{
        {{255, 239}, {240, 224}, {100, 93}, {32, 29}, {17, 15}, {16, 14}, {15, 14}, {1, 0}, {0, 0}}};
    int x = 0;
    for (const auto &[before, after] : cases) {
        previous(x++, 1) = static_cast<std::uint8_t>(before);
    }
    clear_with_style(1);
    x = 0;
    for (const auto &[before, after] : cases) {
        EXPECT_EQ(pixel(x++, 1), after) << before;
    }
}

TEST_F(FadeFrame, WritesEveryRowButTheLast) {
    set_frames(20, 10);
    std::fill_n(chunkybuf2.get(), frame_pixels(), std::uint8_t{100});
    clear_with_style(1);
    Bytes expected(200, 93);
    std::fill(expected.end() - 20, expected.end(), std::uint8_t{77});
    EXPECT_EQ(frame_bytes(), expected);
}

TEST_F(FadeFrame, LeavesTheLastRowAlone) {
    set_frames(20, 10);
    set_random_previous();
    fade_frame(chunkybuf2.get(), chunkybuf1.get());
    for (int x = 0; x < 20; ++x) {
        EXPECT_EQ(pixel(x, 9), 77);
    }
}

TEST_F(FadeFrame, WritesOneRowOfTwoAndNoneOfOne) {
    set_frames(4, 2);
    clear_with_style(1);
    EXPECT_EQ(frame_bytes(), (Bytes{0, 0, 0, 0, 77, 77, 77, 77}));
    set_frames(4, 1);
    clear_with_style(1);
    EXPECT_EQ(frame_bytes(), Bytes(4, 77));
}

TEST_F(BlurFrame, SpreadsAPixelToItsFourNeighboursAndClearsIt) {
    set_frames(20, 12);
    previous(10, 6) = 255;
    clear_with_style(2);
    // 255 / 4, less 255 / 64 and one.
    EXPECT_EQ(pixel(9, 6), 59);
    EXPECT_EQ(pixel(11, 6), 59);
    EXPECT_EQ(pixel(10, 5), 59);
    EXPECT_EQ(pixel(10, 7), 59);
    EXPECT_EQ(pixel(10, 6), 0);
    EXPECT_EQ(pixel(9, 5), 0);
    EXPECT_EQ(pixel(12, 6), 0);
}

TEST_F(BlurFrame, DarkensFlatAreasByASixteenthAndOne) {
    set_frames(20, 12);
    std::fill_n(chunkybuf2.get(), frame_pixels(), std::uint8_t{160});
    clear_with_style(2);
    EXPECT_EQ(pixel(10, 6), 160 - 10 - 1);
    std::fill_n(chunkybuf2.get(), frame_pixels(), std::uint8_t{255});
    clear_with_style(2);
    EXPECT_EQ(pixel(10, 6), 255 - 15 - 1);
}

TEST_F(BlurFrame, ClampsAtBlack) {
    set_frames(20, 12);
    previous(10, 6) = 3;
    previous(5, 6) = 4;
    clear_with_style(2);
    EXPECT_EQ(pixel(9, 6), 0) << "3 / 4 - 0 - 1 is negative";
    EXPECT_EQ(pixel(4, 6), 0) << "4 / 4 - 0 - 1 is zero";
}

TEST_F(BlurFrame, LeavesTwoRowsAtEitherEndAlone) {
    set_frames(20, 12);
    clear_with_style(2);
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 20; ++x) {
            EXPECT_EQ(pixel(x, y), y < 2 || y > 9 ? 77 : 0) << x << ", " << y;
        }
    }
}

TEST_F(BlurFrame, EndsOfARowUseTheRowsAboveAndBelow) {
    set_frames(20, 12);
    previous(19, 5) = 255;
    clear_with_style(2);
    // The left neighbour of the next row's first pixel is this row's last.
    EXPECT_EQ(pixel(0, 6), 59);
    EXPECT_EQ(pixel(18, 5), 59);
    EXPECT_EQ(pixel(19, 4), 59);
    EXPECT_EQ(pixel(19, 6), 59);

    std::fill_n(chunkybuf2.get(), frame_pixels(), std::uint8_t{0});
    previous(0, 5) = 255;
    clear_with_style(2);
    EXPECT_EQ(pixel(19, 4), 59);
    EXPECT_EQ(pixel(1, 5), 59);
}

TEST_F(BlurFrame, WritesNothingInFramesOfFourRowsOrFewer) {
    for (const int height : {1, 2, 3, 4}) {
        set_frames(20, height);
        clear_with_style(2);
        clear_with_style(3);
        EXPECT_EQ(frame_bytes(), Bytes(frame_pixels(), 77)) << height;
    }
    set_frames(20, 5);
    clear_with_style(2);
    for (int y = 0; y < 5; ++y) {
        EXPECT_EQ(pixel(7, y), y == 2 ? 0 : 77) << y;
    }
}

TEST_F(BlurFrame, RandomFrameIsTheMeanOfItsNeighboursEverywhere) {
    set_frames(23, 14);
    set_random_previous();
    clear_with_style(2);
    for (std::size_t at = 2 * 23; at < 12 * 23; ++at) {
        ASSERT_EQ(chunkybuf1[at], blurred(at)) << at;
    }
}

TEST_F(RisingBlur, LiftsThePictureByTwoRows) {
    set_frames(20, 16);
    previous(10, 9) = 255;
    clear_with_style(3);
    EXPECT_EQ(pixel(10, 7), 0);
    EXPECT_EQ(pixel(9, 7), 59);
    EXPECT_EQ(pixel(11, 7), 59);
    EXPECT_EQ(pixel(10, 6), 59);
    EXPECT_EQ(pixel(10, 8), 59);
}

TEST_F(RisingBlur, WritesRowsOneToHeightLessFour) {
    set_frames(20, 12);
    clear_with_style(3);
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 20; ++x) {
            EXPECT_EQ(pixel(x, y), y < 1 || y > 8 ? 77 : 0) << x << ", " << y;
        }
    }
}

TEST_F(RisingBlur, RandomFrameIsTheMeanAroundThePixelTwoRowsBelow) {
    set_frames(23, 14);
    set_random_previous();
    clear_with_style(3);
    for (std::size_t at = 23; at < 11 * 23; ++at) {
        ASSERT_EQ(chunkybuf1[at], blurred(at + 2 * 23)) << at;
    }
}
