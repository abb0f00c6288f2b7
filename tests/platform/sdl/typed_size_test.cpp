// SPDX-License-Identifier: MIT
// Tests of typed sizes, and of the memory that a size needs.
#include "platform/sdl/typed_size.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

using host::side_of_text;

TEST(TypedSide, IsAWholeNumber) {
    EXPECT_EQ(side_of_text("320"), 320);
    EXPECT_EQ(side_of_text("1"), 1);
    EXPECT_EQ(side_of_text("16384"), 16384);
    EXPECT_EQ(side_of_text("0320"), 320);
}

TEST(TypedSide, MayHaveBlanksAroundIt) {
    EXPECT_EQ(side_of_text("  320\t"), 320);
    EXPECT_EQ(side_of_text("\u00A0\u2066320\u2069"), 320);
    EXPECT_EQ(side_of_text("3 20"), std::nullopt);
}

TEST(TypedSide, MayBeWrittenInTheDigitsOfAnyScript) {
    EXPECT_EQ(side_of_text("\u0663\u0662\u0660"), 320);
    EXPECT_EQ(side_of_text("\u0969\u0968\u0966"), 320);
}

TEST(TypedSide, IsNothingElse) {
    for (const char *text :
         {"", " ", "abc", "3,5", "3.5", "35.", "-5", "+5", "0x10", "1e3", "320 x", "\xFF"}) {
        EXPECT_EQ(side_of_text(text), std::nullopt) << text;
    }
}

TEST(TypedSide, IsWithinTheLimitsOfAScreen) {
    for (const char *text : {"0", "000", "16385", "99999", "4294967616", "99999999999999999999"}) {
        EXPECT_EQ(side_of_text(text), std::nullopt) << text;
    }
}

TEST(MemoryOfAScreen, IsThirteenBytesPerPixel) {
    EXPECT_EQ(host::memory_of_screen(1, 1), 13U);
    EXPECT_EQ(host::memory_of_screen(16384, 16384), 3489660928U);
}

TEST(MemoryOfTheMachine, IsAtMostTheProcessesLimit) {
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_AS, &before), 0);
    const std::uint64_t whole = host::memory_of_machine();
    EXPECT_GT(whole, 1U << 24);
    rlimit tight = before;
    tight.rlim_cur = static_cast<rlim_t>(whole - 4096);
    ASSERT_EQ(setrlimit(RLIMIT_AS, &tight), 0);
    const std::uint64_t limited = host::memory_of_machine();
    ASSERT_EQ(setrlimit(RLIMIT_AS, &before), 0);
    EXPECT_EQ(limited, whole - 4096);
}
