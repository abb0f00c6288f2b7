// SPDX-License-Identifier: MIT
// Settings files with a screen that was chosen before.
#include "platform/window/chosen_screen.h"

#include <gtest/gtest.h>

namespace {

const std::string settings = "rotate: 1.000000\nModeID: 1\nwidth: 320\nheight: 256\n*** closing ***";

TEST(ChosenScreen, ReplacesTheThreeValues) {
    EXPECT_EQ(host::with_screen(settings, {0, 640, 512}),
              "rotate: 1.000000\nModeID: 0\nwidth: 640\nheight: 512\n*** closing ***");
}

TEST(ChosenScreen, LeavesWhatWasNotChosen) {
    EXPECT_EQ(host::with_screen(settings, {}), settings);
    EXPECT_EQ(host::with_screen(settings, {2, {}, {}}),
              "rotate: 1.000000\nModeID: 2\nwidth: 320\nheight: 256\n*** closing ***");
    EXPECT_EQ(host::with_screen(settings, {{}, 8, 9}),
              "rotate: 1.000000\nModeID: 1\nwidth: 8\nheight: 9\n*** closing ***");
}

TEST(ChosenScreen, KeepsEveryOtherByte) {
    const host::ChosenScreen chosen{3, 1, 1};
    for (const char *text : {"", "\n", "no label\n\n", "  ModeID: 1\n", "a\r\nb"}) {
        EXPECT_EQ(host::with_screen(text, chosen), text);
    }
    EXPECT_EQ(host::with_screen("width:", chosen), "width: 1");
}

TEST(ChosenScreen, IsTakenOnce) {
    host::chosen_screen = {2, {}, {}};
    EXPECT_EQ(host::take_chosen_screen().mode_id, 2U);
    EXPECT_FALSE(host::take_chosen_screen().is_any());
}

} // namespace
