// SPDX-License-Identifier: MIT
// Tests of where windows open. SDL's driver without a display has one monitor of 1024 x 768.
#include "platform/sdl/window_place.h"

#include <SDL.h>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

using host::Extent;
using host::WindowPlace;

class OpeningCorner : public testing::Test {
protected:
    void SetUp() override {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_VIDEO), 0);
        SDL_Rect bounds{};
        SDL_GetDisplayUsableBounds(0, &bounds);
        ASSERT_EQ(bounds.w, 1024);
        ASSERT_EQ(bounds.h, 768);
    }
    void TearDown() override { SDL_Quit(); }

    static void expect_corner(const WindowPlace &place, Extent window, int x, int y) {
        const SDL_Point corner = host::opening_corner(place, window);
        EXPECT_EQ(corner.x, x);
        EXPECT_EQ(corner.y, y);
    }
};

TEST_F(OpeningCorner, IsTheRememberedOneIfTheWindowFits) {
    expect_corner({0, {2, 20}, SDL_Point{70, 130}}, {320, 256}, 70, 130);
    expect_corner({0, {2, 20}, SDL_Point{1024 - 322, 768 - 276}}, {320, 256}, 702, 492);
}

TEST_F(OpeningCorner, IsMovedSoThatWindowAndFrameFit) {
    expect_corner({0, {2, 20}, SDL_Point{703, 493}}, {320, 256}, 702, 492);
    expect_corner({0, {2, 20}, SDL_Point{-5, -9}}, {320, 256}, 0, 0);
}

TEST_F(OpeningCorner, ShowsTheTopLeftOfAWindowThatIsTooLarge) {
    expect_corner({0, {2, 20}, SDL_Point{100, 100}}, {2000, 1000}, 0, 0);
}

TEST_F(OpeningCorner, IsTheCentreIfNoneIsRemembered) {
    expect_corner({0, {0, 0}, std::nullopt}, {320, 256}, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED);
}

TEST_F(OpeningCorner, IsOnTheFirstMonitorIfTheRememberedOneIsGone) {
    expect_corner({3, {0, 0}, std::nullopt}, {320, 256}, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED);
    for (const int gone : {1, 3}) {
        expect_corner({gone, {0, 0}, SDL_Point{5000, 10}}, {320, 256}, 704, 10);
    }
}

TEST_F(OpeningCorner, LeavesRoomForATitleBar) {
    const Extent room = host::room_for_window(0);
    EXPECT_EQ(room.width, 1024);
    EXPECT_EQ(room.height, 728);
}

TEST_F(OpeningCorner, IsThatOfThePreviousWindow) {
    SDL_Window *window = SDL_CreateWindow("place", 40, 50, 320, 256, SDL_WINDOW_RESIZABLE);
    ASSERT_NE(window, nullptr);
    const WindowPlace place = host::place_of(window, false);
    ASSERT_TRUE(place.corner);
    EXPECT_EQ(place.corner->x, 40);
    EXPECT_EQ(place.corner->y, 50);
    EXPECT_FALSE(host::place_of(window, true).corner);
    SDL_DestroyWindow(window);
}

} // namespace
