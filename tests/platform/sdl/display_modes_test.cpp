// SPDX-License-Identifier: MIT
// Tests of the display modes' numbers, which are stored in settings files.
#include "platform/window/display_modes.h"

#include <gtest/gtest.h>

TEST(DisplayModes, FullScreenIsNumberZero) {
    const host::DisplayMode *mode = host::find_display_mode(0);
    ASSERT_NE(mode, nullptr);
    EXPECT_TRUE(mode->is_full_screen);
}

TEST(DisplayModes, WindowsAreNumberedByTheirFactor) {
    for (std::uint32_t id = 1; id <= 4; ++id) {
        const host::DisplayMode *mode = host::find_display_mode(id);
        ASSERT_NE(mode, nullptr);
        EXPECT_FALSE(mode->is_full_screen);
        EXPECT_EQ(mode->factor, static_cast<int>(id));
    }
}

TEST(DisplayModes, OtherNumbersAreNoModes) {
    EXPECT_EQ(host::display_modes().size(), 5U);
    EXPECT_EQ(host::find_display_mode(5), nullptr);
    EXPECT_EQ(host::find_display_mode(0xFFFFFFFF), nullptr);
}
