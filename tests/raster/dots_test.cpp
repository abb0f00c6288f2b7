// SPDX-License-Identifier: MIT
// Tests of the dot sprite, the dot plotter and the overlay.
#include "raster/dots.h"

#include "object/model.h"
#include "support/frame_copies.h"
#include "support/model_builder.h"
#include "support/reference_dot_plotter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

std::uint8_t texel(int column, int row) {
    return dot_image[static_cast<std::size_t>(row * 64 + column)];
}

/// Draws into a frame of 100 x 60, whose drawn rows are 6 to 54.
class Dots : public testing::Test {
protected:
    void SetUp() override {
        reset_program_state();
        set_frame(100, 60);
    }

    static void set_sprite(std::uint8_t value) { std::fill_n(dot_image.get(), 64 * 64, value); }
    static void set_pixels(std::uint8_t value) { std::fill_n(chunkybuf1.get(), frame_pixels(), value); }
    static std::vector<std::uint8_t> black() { return std::vector<std::uint8_t>(frame_pixels()); }
};

using DotSprite = Dots;
using PlotDot = Dots;
using DotsOverlay = Dots;

} // namespace

TEST_F(DotSprite, PeaksOnePixelAboveAndLeftOfItsCentre) {
    build_dot_image();
    EXPECT_EQ(texel(31, 31), 255);
    EXPECT_EQ(texel(30, 31), 246);
    EXPECT_EQ(texel(31, 30), 246);
    EXPECT_EQ(texel(32, 31), 246);
    EXPECT_EQ(texel(31, 32), 246);
}

TEST_F(DotSprite, FallsToZeroAtADistanceOfThirtyOne) {
    build_dot_image();
    EXPECT_EQ(texel(0, 31), 0);
    EXPECT_EQ(texel(31, 0), 0);
    EXPECT_EQ(texel(31, 62), 0);
    // 255 minus 30/31 of 255.
    EXPECT_EQ(texel(1, 31), 8);
    EXPECT_EQ(texel(31, 61), 8);
}

TEST_F(DotSprite, LastRowAndColumnAndTheCornersStayZero) {
    set_sprite(9);
    build_dot_image();
    for (int i = 0; i < 64; ++i) {
        EXPECT_EQ(texel(63, i), 0);
        EXPECT_EQ(texel(i, 63), 0);
    }
    EXPECT_EQ(texel(0, 0), 0);
    EXPECT_EQ(texel(62, 0), 0);
    // The distance of (9, 9) is 22 sqrt 2, just beyond 31.
    EXPECT_EQ(texel(9, 9), 0);
    EXPECT_EQ(texel(10, 10), 10);
}

TEST_F(DotSprite, IsAConeEverywhere) {
    build_dot_image();
    const std::vector<std::uint8_t> expected = reference_sprite();
    EXPECT_EQ(std::vector<std::uint8_t>(dot_image.get(), dot_image.get() + 64 * 64), expected);
}

TEST_F(PlotDot, SaturatesAt255) {
    set_sprite(255);
    set_pixels(200);
    viewer.dot_lum = 25600;
    plot_dot(50, 30, 8);
    EXPECT_EQ(pixel(50, 30), 255);
    EXPECT_EQ(pixel(10, 30), 200);
}

TEST_F(PlotDot, AddsTheTexelTimesTheLuminance) {
    set_sprite(255);
    set_pixels(100);
    viewer.dot_lum = 25600;
    plot_dot(50, 30, 8);
    EXPECT_EQ(pixel(50, 30), 199);
    // 155 + 99 is the largest sum that is not saturated.
    set_pixels(155);
    plot_dot(50, 30, 8);
    EXPECT_EQ(pixel(50, 30), 254);
}

TEST_F(PlotDot, UsesTheBlurLuminanceWhileFramesBlur) {
    set_sprite(255);
    viewer.dot_lum = 25600;
    viewer.dot_lum_in_blur = 2560;
    for (const std::int32_t style : {1, 2, 3}) {
        set_pixels(200);
        viewer.clear_style = style;
        plot_dot(50, 30, 8);
        EXPECT_EQ(pixel(50, 30), 209) << style;
    }
}

TEST_F(PlotDot, TexelOfZeroLeavesThePixelUnchanged) {
    build_dot_image();
    set_pixels(90);
    plot_dot(50, 30, 8);
    // The dot's square reaches row 36, where the column of its centre shows the sprite's texel (32, 60).
    EXPECT_EQ(pixel(42, 22), 90);
    EXPECT_EQ(pixel(56, 36), 90);
    EXPECT_GT(pixel(49, 29), 180);
}

TEST_F(PlotDot, RadiusOfEightReachesAcrossFifteenPixels) {
    // Four texels per pixel, and the first pixel is one step into the sprite: texels 4, 8, ... 60.
    set_sprite(255);
    plot_dot(50, 30, 8);
    for (int row = 22; row <= 36; ++row) {
        EXPECT_EQ(lit_columns(row), columns(42, 56)) << row;
    }
    EXPECT_EQ(lit_columns(21), std::vector<int>{});
    EXPECT_EQ(lit_columns(37), std::vector<int>{});
}

TEST_F(PlotDot, RadiusOfOneSqueezesTheSpriteIntoAboutTwoPixels) {
    // 32 texels per pixel. At a whole position the single pixel samples texel 32; half a pixel further there
    // are two pixels, at 16 and 48.
    set_sprite(255);
    plot_dot(50, 30, 1);
    EXPECT_EQ(lit_rows(), std::vector<int>{29});
    EXPECT_EQ(lit_columns(29), columns(49, 49));
    blank_frame();
    plot_dot(50.5F, 30.5F, 1);
    EXPECT_EQ(lit_rows(), (std::vector<int>{29, 30}));
    EXPECT_EQ(lit_columns(29), columns(49, 50));
}

TEST_F(PlotDot, FirstPixelSamplesOneStepLessTheFractionIntoTheSprite) {
    for (std::size_t row = 0; row < 64; ++row) {
        for (std::size_t column = 0; column < 64; ++column) {
            dot_image[row * 64 + column] = static_cast<std::uint8_t>(4 * column);
        }
    }
    viewer.dot_lum = 65536;
    plot_dot(50, 30, 8);
    EXPECT_EQ(pixel(42, 30), 4 * 4);
    EXPECT_EQ(pixel(43, 30), 4 * 8);
    blank_frame();
    plot_dot(50.25F, 30, 8);
    EXPECT_EQ(pixel(42, 30), 4 * 3);
    EXPECT_EQ(pixel(43, 30), 4 * 7);
    EXPECT_EQ(pixel(57, 30), 4 * 63);
    EXPECT_EQ(pixel(58, 30), 0);
}

TEST_F(PlotDot, DrawsNothingAboveRowSix) {
    set_sprite(255);
    plot_dot(50, 8, 8);
    EXPECT_EQ(lit_rows(), (std::vector<int>{6, 7, 8, 9, 10, 11, 12, 13, 14}));
    blank_frame();
    plot_dot(50, -2, 8);
    EXPECT_TRUE(lit_rows().empty());
}

TEST_F(PlotDot, DrawsNothingBelowRowHeightLessSix) {
    set_sprite(255);
    plot_dot(50, 56, 8);
    EXPECT_EQ(lit_rows(), (std::vector<int>{48, 49, 50, 51, 52, 53, 54}));
    blank_frame();
    plot_dot(50, 64, 8);
    EXPECT_TRUE(lit_rows().empty());
}

TEST_F(PlotDot, ClippedRowsDoNotMoveTheRestOfTheSprite) {
    for (std::size_t i = 0; i < 64 * 64; ++i) {
        dot_image[i] = static_cast<std::uint8_t>(4 * (i / 64));
    }
    viewer.dot_lum = 65536;
    plot_dot(50, 8, 8);
    // Row 0 samples the sprite's row 4, and row 6 its row 28.
    EXPECT_EQ(pixel(50, 6), 4 * 28);
    EXPECT_EQ(pixel(50, 14), 4 * 60);
}

TEST_F(PlotDot, IsClippedAtTheFramesSides) {
    for (std::size_t row = 0; row < 64; ++row) {
        for (std::size_t column = 0; column < 64; ++column) {
            dot_image[row * 64 + column] = static_cast<std::uint8_t>(4 * column);
        }
    }
    viewer.dot_lum = 65536;
    plot_dot(3, 30, 8);
    // x = -5 samples texel 4.
    EXPECT_EQ(lit_columns(30), columns(0, 9));
    EXPECT_EQ(pixel(0, 30), 4 * 24);
    blank_frame();
    plot_dot(97, 30, 8);
    EXPECT_EQ(lit_columns(30), columns(89, 99));
    EXPECT_EQ(pixel(99, 30), 4 * 44);
    blank_frame();
    plot_dot(-20, 30, 8);
    plot_dot(120, 30, 8);
    EXPECT_TRUE(lit_rows().empty());
}

TEST_F(PlotDot, LeavesTheDepthsAlone) {
    set_sprite(255);
    std::fill_n(zbuf.get(), frame_pixels(), std::uint16_t{1234});
    plot_dot(50, 30, 8);
    EXPECT_EQ(frame_depths(), std::vector<std::uint16_t>(frame_pixels(), 1234));
}

TEST_F(PlotDot, DrawsNothingWithoutAPositiveStep) {
    set_sprite(255);
    plot_dot(50, 30, -1);
    plot_dot(50, 30, -0.0F);
    plot_dot(50, 30, -std::numeric_limits<float>::infinity());
    plot_dot(50, 30, std::nanf(""));
    // From here on the step is less than 1/65536 of a texel.
    plot_dot(50, 30, 2097153.0F);
    plot_dot(50, 30, std::numeric_limits<float>::infinity());
    EXPECT_EQ(frame_bytes(), black());
}

TEST_F(PlotDot, LargestDotsMagnifyTheSpriteHugely) {
    // With a step of 1/65536 of a texel, the whole frame before the dot's centre shows texel (0, 0).
    set_sprite(0);
    dot_image[0] = 255;
    plot_dot(2097152.0F, 2097152.0F, 2097152.0F);
    EXPECT_EQ(lit_columns(30), columns(0, 99));
    blank_frame();
    dot_image[0] = 0;
    dot_image[31 * 64 + 31] = 255;
    plot_dot(50, 30, 2097152.0F);
    // At the dot's own place the pixels change to the texel one step before the middle (32, 32).
    EXPECT_EQ(lit_columns(28), columns(0, 48));
    EXPECT_EQ(lit_columns(29), std::vector<int>{});
}

TEST_F(PlotDot, HostileNumbersStayOnTheDrawnRows) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const std::vector<float> hostile{std::nanf(""), infinity,       -infinity, 1e30F,  -1e30F,
                                     2147483648.0F, -2147483648.0F, 0.0F,      1e-30F, 0.0009765625F,
                                     30.0F,         2097152.0F,     1e6F,      -1e6F,  50.999F};
    set_sprite(255);
    for (const float x : hostile) {
        for (const float y : hostile) {
            for (const float s : hostile) {
                plot_dot(x, y, s);
            }
        }
    }
    const std::vector<int> rows = lit_rows();
    ASSERT_FALSE(rows.empty());
    EXPECT_GE(rows.front(), 6);
    EXPECT_LE(rows.back(), 54);
}

TEST_F(PlotDot, RandomDotsMatchTheReferenceWalk) {
    std::mt19937 random(67);
    const auto between = [&random](float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(random);
    };
    for (std::size_t i = 0; i < 64 * 64; ++i) {
        dot_image[i] = static_cast<std::uint8_t>(random());
    }
    const std::vector<std::uint8_t> sprite(dot_image.get(), dot_image.get() + 64 * 64);
    for (int i = 0; i < 3000; ++i) {
        viewer.clear_style = i % 4;
        viewer.dot_lum = std::uniform_int_distribution<std::int32_t>(0, 131072)(random);
        viewer.dot_lum_in_blur = std::uniform_int_distribution<std::int32_t>(-32768, 32768)(random);
        const float reach = i % 3 == 0 ? 3000.0F : 120.0F;
        const float x = between(-reach, reach);
        const float y = between(-reach, reach);
        const float s = i % 5 == 0 ? between(0.01F, 2000.0F) : between(0.2F, 12.0F);

        std::vector<std::uint8_t> expected = frame_bytes();
        walk_dot({100, 60, expected, sprite, i % 4 == 0 ? viewer.dot_lum : viewer.dot_lum_in_blur}, x, y, s);
        plot_dot(x, y, s);
        ASSERT_EQ(frame_bytes(), expected) << "dot " << i << " at " << x << ", " << y << " of radius " << s;
        if (i % 20 == 0) {
            set_pixels(static_cast<std::uint8_t>(random() % 100));
        }
    }
}

TEST_F(PlotDot, MatchesTheReferenceWalkAtEveryEdgeOfTheFrame) {
    build_dot_image();
    const std::vector<std::uint8_t> sprite = reference_sprite();
    for (const float s : {0.3F, 0.49F, 0.5F, 0.51F, 1.0F, 1.7F, 3.27F, 8.0F, 40.0F, 300.0F}) {
        for (const float x : {-310.2F, -9.0F, -0.6F, 0.0F, 0.4F, 7.3F, 50.5F, 99.9F, 101.0F, 390.7F}) {
            for (const float y : {-305.0F, -2.2F, 5.9F, 6.0F, 34.75F, 54.0F, 59.5F, 340.1F}) {
                set_pixels(10);
                std::vector<std::uint8_t> expected = frame_bytes();
                walk_dot({100, 60, expected, sprite, viewer.dot_lum}, x, y, s);
                plot_dot(x, y, s);
                EXPECT_EQ(frame_bytes(), expected) << x << ' ' << y << ' ' << s;
            }
        }
    }
}

TEST_F(PlotDot, DrawsNothingFarOutsideTheFrame) {
    set_sprite(255);
    for (const float far : {4e9F, -4e9F, 1e30F, -1e30F}) {
        plot_dot(far, 15, 2);
        plot_dot(15, far, 2);
        plot_dot(far, far, 0.01F);
        EXPECT_EQ(frame_bytes(), black()) << far;
    }
}

TEST_F(DotsOverlay, PlotsALargerDotForNearerPointsOnePixelBelowEach) {
    build_dot_image();
    set_model(std::vector<Vec3>(3), {});
    lwopoints3[0] = {20, 20, 100};
    lwopoints3[1] = {70.25F, 30.5F, 300};
    lwopoints3[2] = {40, 40, 0};
    draw_dots_overlay();

    std::vector<std::uint8_t> expected = black();
    const std::vector<std::uint8_t> sprite = reference_sprite();
    const ReferenceDots dots{100, 60, expected, sprite, 25600};
    walk_dot(dots, 20, 21, 2);
    walk_dot(dots, 70.25F, 31.5F, 4);
    walk_dot(dots, 40, 41, 1);
    EXPECT_EQ(frame_bytes(), expected);
    EXPECT_NE(frame_bytes(), black());
}

TEST_F(DotsOverlay, ZeroesBothCounters) {
    set_model({{1, 2, 3}}, {});
    faces_seen = 5;
    triangles_drawn = 6;
    draw_dots_overlay();
    EXPECT_EQ(faces_seen, 0);
    EXPECT_EQ(triangles_drawn, 0);
}

TEST_F(DotsOverlay, IgnoresATrailingPartialPoint) {
    set_sprite(255);
    set_model(std::vector<Vec3>(2), {});
    lwopoints3[0] = {20, 20, 100};
    lwopoints3[1] = {70, 40, 100};
    point_chunk_bytes = 12 + 11;
    draw_dots_overlay();
    EXPECT_NE(pixel(20, 21), 0);
    EXPECT_EQ(pixel(70, 41), 0);
}
