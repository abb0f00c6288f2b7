// SPDX-License-Identifier: MIT
// The numbers of the display modes, which settings files keep.
#include "platform/sdl/display_modes.h"

#include <gtest/gtest.h>

TEST(DisplayModes, FullScreenIsNumberNought) {
    const desktop::DisplayMode *mode = desktop::find_display_mode(0);
    ASSERT_NE(mode, nullptr);
    EXPECT_TRUE(mode->is_full_screen);
}

TEST(DisplayModes, WindowsHaveTheirFactorsNumber) {
    for (std::uint32_t id = 1; id <= 4; ++id) {
        const desktop::DisplayMode *mode = desktop::find_display_mode(id);
        ASSERT_NE(mode, nullptr);
        EXPECT_FALSE(mode->is_full_screen);
        EXPECT_EQ(mode->factor, static_cast<int>(id));
    }
}

TEST(DisplayModes, OtherNumbersAreNoModes) {
    EXPECT_EQ(desktop::display_modes().size(), 5U);
    EXPECT_EQ(desktop::find_display_mode(5), nullptr);
    EXPECT_EQ(desktop::find_display_mode(0xFFFFFFFF), nullptr);
}
