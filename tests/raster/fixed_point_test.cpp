// SPDX-License-Identifier: MIT
// Tests of 16.16 fixed point.
#include "raster/fixed_point.h"

#include <gtest/gtest.h>

#include <limits>

TEST(ToFixed, HasSixteenFractionBits) {
    EXPECT_EQ(as_signed(to_fixed(1.0F)), 65536);
    EXPECT_EQ(as_signed(to_fixed(-2.5F)), -163840);
    // A third of 65536 is 21845.33. The fraction is truncated toward zero for both signs.
    EXPECT_EQ(as_signed(to_fixed(1.0F / 3.0F)), 21845);
    EXPECT_EQ(as_signed(to_fixed(-1.0F / 3.0F)), -21845);
}

TEST(ToFixed, SaturatesAtWholeNumbersOfSixteenBits) {
    EXPECT_EQ(as_signed(to_fixed(32767.0F)), 32767 * 65536);
    EXPECT_EQ(as_signed(to_fixed(32768.0F)), 2147483647);
    EXPECT_EQ(as_signed(to_fixed(-32768.0F)), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(as_signed(to_fixed(-40000.0F)), std::numeric_limits<std::int32_t>::min());
}

TEST(Fixed, WrapsInsteadOfOverflowing) {
    const Fixed sum = to_fixed(32767.5F) + to_fixed(1.0F);
    EXPECT_EQ(as_signed(sum), -(32767 * 65536) - 32768);
}

TEST(Fixed, StepsAreOneProduct) {
    const Fixed step = to_fixed(-0.3F);
    Fixed walked = to_fixed(5.0F);
    for (int i = 0; i < 1000; ++i) {
        walked += step;
    }
    EXPECT_EQ(walked, to_fixed(5.0F) + 1000 * step);
}

TEST(IntegerPart, RoundsDown) {
    EXPECT_EQ(integer_part(to_fixed(10.75F)), 10);
    EXPECT_EQ(integer_part(to_fixed(-0.25F)), -1);
    EXPECT_EQ(integer_part(to_fixed(-3.0F)), -3);
}
