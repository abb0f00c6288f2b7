// SPDX-License-Identifier: MIT
// Tests of the grey ramp with gamma, compared with exact integer arithmetic where that is possible.
#include "display/palette.h"
#include "support/open_display.h"

#include <cmath>
#include <limits>

namespace {

using host::Colour;

class Palette : public DisplayTest {
protected:
    void SetUp() override {
        DisplayTest::SetUp();
        open_display();
    }

    static void build(double red, double green, double blue) {
        viewer.gammas = {red, green, blue};
        build_palette();
    }
};

/// The largest n with n^power <= value.
int whole_root(std::int64_t value, int power) {
    std::int64_t root = 0;
    const auto raised = [power](std::int64_t base) {
        std::int64_t product = base;
        for (int i = 1; i < power; ++i) {
            product *= base;
        }
        return product;
    };
    while (raised(root + 1) <= value) {
        ++root;
    }
    return static_cast<int>(root);
}

TEST_F(Palette, IsTheIdentityWithoutGamma) {
    build(1.0, 1.0, 1.0);
    for (int i = 0; i < 256; ++i) {
        const auto level = static_cast<std::uint8_t>(i);
        EXPECT_EQ(palette()[static_cast<std::size_t>(i)], (Colour{level, level, level})) << i;
    }
}

TEST_F(Palette, TruncatesEveryLevel) {
    // 255 (i / 255)^(1/2) is the root of 255 i, 255 (i / 255)^2 is i i / 255, and 255 (i / 255)^(1/3) is the
    // cube root of 255 255 i. These are integers only at both ends, so rounding instead of truncating would
    // show.
    build(2.0, 0.5, 3.0);
    for (int i = 0; i < 256; ++i) {
        const Colour expected{static_cast<std::uint8_t>(whole_root(255 * i, 2)),
                              static_cast<std::uint8_t>(i * i / 255),
                              static_cast<std::uint8_t>(whole_root(std::int64_t{65025} * i, 3))};
        EXPECT_EQ(palette()[static_cast<std::size_t>(i)], expected) << i;
    }
}

TEST_F(Palette, HasTheLevelsOfTheNamedGammas) {
    build(2.0, 0.5, 3.0);
    EXPECT_EQ(palette()[1], (Colour{15, 0, 40}));
    EXPECT_EQ(palette()[64], (Colour{127, 16, 160}));
    EXPECT_EQ(palette()[128], (Colour{180, 64, 202}));
    EXPECT_EQ(palette()[254], (Colour{254, 253, 254}));
}

TEST_F(Palette, GivesEachChannelItsOwnGamma) {
    build(3.0, 2.0, 0.5);
    EXPECT_EQ(palette()[64], (Colour{160, 127, 16}));
    build(0.5, 3.0, 2.0);
    EXPECT_EQ(palette()[64], (Colour{16, 160, 127}));
}

TEST_F(Palette, IsAlmostBlackAtTheSmallestGamma) {
    build(0.02, 1.0, 0.02);
    EXPECT_EQ(palette()[128], (Colour{0, 128, 0}));
    EXPECT_EQ(palette()[254], (Colour{209, 254, 209}));
    EXPECT_EQ(palette()[255], (Colour{255, 255, 255}));
}

TEST_F(Palette, IsBlackExceptTheLastEntryAtGammaZero) {
    build(0.0, 1.0, 1.0);
    for (std::size_t i = 0; i < 255; ++i) {
        EXPECT_EQ(palette()[i][0], 0) << i;
        EXPECT_EQ(palette()[i][1], i) << i;
    }
    EXPECT_EQ(palette()[255], (Colour{255, 255, 255}));
}

TEST_F(Palette, KeepsBlackAndWhiteAtBothEndsForEveryGammaOfTheKeys) {
    for (double gamma = 0.02; gamma <= 3.0; gamma += 0.1) {
        build(gamma, gamma, gamma);
        EXPECT_EQ(palette()[0], (Colour{0, 0, 0})) << gamma;
        EXPECT_EQ(palette()[255], (Colour{255, 255, 255})) << gamma;
    }
}

TEST_F(Palette, AcceptsGammasBeyondTheKeysRange) {
    // (64 / 255)^(1/10) = 0.8708.., and a gamma of a million leaves all but index 0 at 254.99..
    build(10.0, 1e6, 1.0);
    EXPECT_EQ(palette()[64][0], 222);
    EXPECT_EQ(palette()[0][1], 0);
    EXPECT_EQ(palette()[64][1], 254);
}

TEST_F(Palette, SurvivesGammasThatAreNaN) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    build(nan, infinity, -1.0);
    // 1 / infinity is 0, and anything to the power 0 is 1.
    EXPECT_EQ(palette()[0][1], 255);
    EXPECT_EQ(palette()[100][1], 255);
    // A negative gamma reverses the ramp; index 255 keeps level 255.
    EXPECT_EQ(palette()[255][2], 255);
}

TEST_F(Palette, IsLoadedOnceAndShownToTheUser) {
    (void)new_calls();
    viewer.message_timer = -0.25;
    build(0.02, 2.5, 10.0);
    EXPECT_EQ(new_calls(), std::vector<std::string>{"LoadRGB32(256)"});
    EXPECT_STREQ(viewer.message_line.data(), "R-gamma:0.02 G-gamma:2.50 B-gamma:10.00");
    EXPECT_EQ(viewer.message_timer, 2.0);
}

TEST_F(Palette, ShowsTwoDecimalsOfWhatTheStepsAddUpTo) {
    double gamma = 1.0;
    for (int step = 0; step < 15; ++step) {
        gamma += 0.1;
    }
    build(gamma, gamma - 1.0, 1.005);
    EXPECT_STREQ(viewer.message_line.data(), "R-gamma:2.50 G-gamma:1.50 B-gamma:1.00");
}

TEST_F(Palette, CutsAnOverlongMessageOfAnEditedFile) {
    build(1e300, 1e300, 1e300);
    const std::string line = viewer.message_line.data();
    EXPECT_EQ(line.size(), viewer.message_line.size() - 1);
    EXPECT_TRUE(line.starts_with("R-gamma:10000000000000000525047602552044202487"));
}

} // namespace
