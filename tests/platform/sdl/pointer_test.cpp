// SPDX-License-Identifier: MIT
// How the pointer is let go, on SDL's driver without a display.
#include "platform/sdl/pointer.h"

#include "platform/sdl/display_modes.h"
#include "platform/sdl/picture_window.h"

#include <SDL.h>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace {

class Pointer : public testing::Test {
protected:
    void SetUp() override {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        ASSERT_TRUE(desktop::open_picture_window({320, 256}, *desktop::find_display_mode(1), "pointer"));
        SDL_SetRelativeMouseMode(SDL_TRUE);
        SDL_ShowCursor(SDL_DISABLE);
        desktop::show_title(true);
        ASSERT_TRUE(desktop::is_pointer_held());
    }

    void TearDown() override {
        desktop::close_picture_window();
        desktop::disconnect_display();
    }

    static void expect_free() {
        EXPECT_FALSE(desktop::is_pointer_held());
        EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_ENABLE);
    }

    static void send(SDL_WindowEventID kind) {
        SDL_Event event{};
        event.type = SDL_WINDOWEVENT;
        event.window.event = static_cast<Uint8>(kind);
        SDL_PushEvent(&event);
    }
};

TEST_F(Pointer, IsShownAgainWhenItIsFreed) {
    desktop::free_pointer();
    expect_free();
    EXPECT_STREQ(SDL_GetWindowTitle(desktop::picture_window()), "pointer");
}

TEST_F(Pointer, IsFreedInTheMomentWhenTheFocusGoes) {
    send(SDL_WINDOWEVENT_FOCUS_GAINED);
    EXPECT_TRUE(desktop::is_pointer_held());
    send(SDL_WINDOWEVENT_FOCUS_LOST);
    expect_free();
}

TEST_F(Pointer, IsFreedForARequester) {
    desktop::yield_to_requester(false);
    expect_free();
}

TEST_F(Pointer, IsFreedWithTheWindow) {
    desktop::close_picture_window();
    expect_free();
}

TEST_F(Pointer, IsFreedWhereItIsNotWanted) {
    desktop::take_or_free_pointer(false);
    expect_free();
}

} // namespace
