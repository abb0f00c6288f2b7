// SPDX-License-Identifier: MIT
// Tests of the conversion from float to int.
#include "core/to_int.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(ToInt, TruncatesTowardZero) {
    EXPECT_EQ(to_int(1.999), 1);
    EXPECT_EQ(to_int(-1.999), -1);
    EXPECT_EQ(to_int(0.5), 0);
    EXPECT_EQ(to_int(-0.5), 0);
    EXPECT_EQ(to_int(7.0), 7);
}

TEST(ToInt, KeepsTheEndsOfTheRange) {
    EXPECT_EQ(to_int(2147483647.0), 2147483647);
    EXPECT_EQ(to_int(2147483646.75), 2147483646);
    EXPECT_EQ(to_int(-2147483648.0), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(to_int(-2147483647.5), -2147483647);
}

TEST(ToInt, SaturatesBeyondTheRange) {
    EXPECT_EQ(to_int(2147483648.0), 2147483647);
    EXPECT_EQ(to_int(1e300), 2147483647);
    EXPECT_EQ(to_int(std::numeric_limits<double>::infinity()), 2147483647);
    EXPECT_EQ(to_int(-2147483649.0), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(to_int(-std::numeric_limits<double>::infinity()), std::numeric_limits<std::int32_t>::min());
}

TEST(ToInt, MakesNaNTheSmallestInteger) {
    EXPECT_EQ(to_int(std::nan("")), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(to_int(std::nanf("")), std::numeric_limits<std::int32_t>::min());
}
