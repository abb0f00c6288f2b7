// SPDX-License-Identifier: MIT
// Tests of when the pointer is freed, with SDL's driver that has no display.
#include "platform/sdl/pointer.h"

#include "platform/sdl/sdl_window.h"
#include "platform/window/display_modes.h"
#include "platform/window/picture_window.h"

#include <SDL.h>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace {

class Pointer : public testing::Test {
protected:
    void SetUp() override {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        ASSERT_TRUE(host::open_picture_window({320, 256}, *host::find_display_mode(1), "pointer"));
        SDL_SetRelativeMouseMode(SDL_TRUE);
        SDL_ShowCursor(SDL_DISABLE);
        host::show_title();
        ASSERT_TRUE(host::is_pointer_held());
    }

    void TearDown() override {
        host::close_picture_window();
        host::disconnect_display();
    }

    static void expect_free() {
        EXPECT_FALSE(host::is_pointer_held());
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
    host::free_pointer();
    expect_free();
    EXPECT_STREQ(SDL_GetWindowTitle(host::picture_window()), "pointer");
}

TEST_F(Pointer, IsFreedAsSoonAsTheFocusIsLost) {
    send(SDL_WINDOWEVENT_FOCUS_GAINED);
    EXPECT_TRUE(host::is_pointer_held());
    send(SDL_WINDOWEVENT_FOCUS_LOST);
    expect_free();
}

TEST_F(Pointer, IsFreedForARequester) {
    host::make_room_for_requester();
    expect_free();
}

TEST_F(Pointer, IsFreedWithTheWindow) {
    host::close_picture_window();
    expect_free();
}

TEST_F(Pointer, IsFreedIfItIsNotWanted) {
    host::take_or_free_pointer(false);
    expect_free();
}

} // namespace
