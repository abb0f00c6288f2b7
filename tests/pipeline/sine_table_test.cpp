// SPDX-License-Identifier: MIT
// Tests of the sine table.
#include "pipeline/sine_table.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

class SineTable : public testing::Test {
protected:
    void SetUp() override {
        sine_table.fill(99.0F);
        build_sine_table();
    }
};

} // namespace

TEST_F(SineTable, HoldsATurnAndAHalf) {
    ASSERT_EQ(sine_table.size(), 6144U);
    for (std::size_t i = 0; i < 6144; ++i) {
        ASSERT_NEAR(sine_table[i], std::sin(static_cast<double>(i) / 4096.0 * 2.0 * 3.14159265358979), 1e-6)
            << i;
    }
}

TEST_F(SineTable, IsExactAtTheQuarters) {
    EXPECT_EQ(sine_table[0], 0.0F);
    EXPECT_EQ(sine_table[1024], 1.0F);
    EXPECT_EQ(sine_table[3072], -1.0F);
    EXPECT_EQ(sine_table[5120], 1.0F);
    EXPECT_EQ(sine_table[512], static_cast<float>(std::sqrt(0.5)));
}

TEST_F(SineTable, AnglesWrapAtATurn) {
    EXPECT_EQ(sine(4096 + 700), sine_table[700]);
    EXPECT_EQ(sine(static_cast<std::uint32_t>(-1)), sine_table[4095]);
    EXPECT_EQ(sine(static_cast<std::uint32_t>(-1024)), sine_table[3072]);
    EXPECT_EQ(sine(0x80000000U), sine_table[0]);
}

TEST_F(SineTable, HalfATurnNegates) {
    for (std::uint32_t angle = 0; angle < 4096; ++angle) {
        ASSERT_NEAR(sine(angle + 2048), -sine(angle), 1e-6) << angle;
    }
}

TEST_F(SineTable, CosineIsTheSineAQuarterOn) {
    EXPECT_EQ(cosine(0), 1.0F);
    EXPECT_EQ(cosine(700), sine_table[1724]);
    EXPECT_EQ(cosine(3500), sine_table[3500 + 1024 - 4096]);
    EXPECT_EQ(cosine(static_cast<std::uint32_t>(-1024)), sine_table[0]);
}
