// SPDX-License-Identifier: MIT
// What one process leaves of its window to the next.
#include "platform/sdl/window_state.h"

#include "platform/sdl/host.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

class LeftWindow : public testing::Test {
protected:
    void TearDown() override {
        host::closed_window.reset();
        host::inherited_window.reset();
        unsetenv("ZELVO_WINDOW");
    }

    static const host::WindowState &pass_on(const host::WindowState &state) {
        host::closed_window = state;
        host::inherited_window.reset();
        sdl::leave_window();
        host::inherit_window();
        return host::inherited_window.value();
    }
};

TEST_F(LeftWindow, KeepsItsPlaceAndItsSize) {
    const host::WindowState state =
        pass_on({{1, {2, 24}, SDL_Point{-70, 130}}, host::Extent{640, 512}, false, false});
    EXPECT_EQ(state.place.display, 1);
    EXPECT_EQ(state.place.frame.width, 2);
    EXPECT_EQ(state.place.frame.height, 24);
    ASSERT_TRUE(state.place.corner);
    EXPECT_EQ(state.place.corner->x, -70);
    EXPECT_EQ(state.place.corner->y, 130);
    ASSERT_TRUE(state.extent);
    EXPECT_EQ(state.extent->width, 640);
    EXPECT_EQ(state.extent->height, 512);
    EXPECT_FALSE(state.is_full_screen);
    EXPECT_FALSE(state.is_maximised);
    EXPECT_EQ(std::getenv("ZELVO_WINDOW"), nullptr);
}

TEST_F(LeftWindow, HasNoPlaceOfItsOwnOnAFullScreen) {
    const host::WindowState full = pass_on({{}, {}, true, false});
    EXPECT_TRUE(full.is_full_screen);
    EXPECT_FALSE(full.place.corner);
    EXPECT_FALSE(full.extent);
    EXPECT_TRUE(pass_on({{}, {}, false, true}).is_maximised);
}

TEST_F(LeftWindow, IsNoneWhereThereIsNoneOrNoSuchText) {
    sdl::leave_window();
    EXPECT_EQ(std::getenv("ZELVO_WINDOW"), nullptr);
    for (const char *text : {"", "x", "1 0 0 1 5 5 0 0 1", "2 0 0 0 0 0 0 0 0 0"}) {
        setenv("ZELVO_WINDOW", text, 1);
        host::inherit_window();
        EXPECT_FALSE(host::inherited_window) << text;
        EXPECT_EQ(std::getenv("ZELVO_WINDOW"), nullptr);
    }
}

} // namespace
