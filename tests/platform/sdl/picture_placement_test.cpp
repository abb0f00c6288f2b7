// SPDX-License-Identifier: MIT
// Tests of the picture's place in its window.
#include "platform/window/picture_placement.h"

#include <gtest/gtest.h>

using host::Extent;
using host::place_picture;
using host::Placement;
using host::window_extent;

namespace {

void expect_placement(Extent picture, Extent window, Placement expected) {
    const Placement placement = place_picture(picture, window);
    EXPECT_EQ(placement.x, expected.x);
    EXPECT_EQ(placement.y, expected.y);
    EXPECT_EQ(placement.width, expected.width);
    EXPECT_EQ(placement.height, expected.height);
    EXPECT_EQ(placement.whole_factor, expected.whole_factor);
}

} // namespace

TEST(PicturePlacement, FillsAWindowOfItsOwnSize) {
    expect_placement({320, 256}, {320, 256}, {0, 0, 320, 256, 1});
}

TEST(PicturePlacement, UsesTheLargestWholeFactorAndCentres) {
    expect_placement({320, 256}, {1920, 1080}, {320, 28, 1280, 1024, 4});
    expect_placement({320, 256}, {800, 600}, {80, 44, 640, 512, 2});
}

TEST(PicturePlacement, LeavesAtMostAThirdOfTheHeightUnused) {
    // 256 of 384 rows are two thirds exactly.
    expect_placement({320, 256}, {500, 384}, {90, 64, 320, 256, 1});
    expect_placement({320, 256}, {500, 385}, {9, 0, 481, 385, 0});
}

TEST(PicturePlacement, ScalesToFitASmallerWindow) {
    expect_placement({320, 256}, {160, 128}, {0, 0, 160, 128, 0});
    expect_placement({320, 256}, {300, 256}, {0, 8, 300, 240, 0});
    expect_placement({320, 256}, {400, 200}, {75, 0, 250, 200, 0});
}

TEST(PicturePlacement, FitsAWidePictureIntoTheWidth) {
    expect_placement({1280, 256}, {1920, 1080}, {0, 348, 1920, 384, 0});
}

TEST(PicturePlacement, ReportsAFittingFactorThatIsWhole) {
    expect_placement({1280, 100}, {1280, 1000}, {0, 450, 1280, 100, 1});
}

TEST(PicturePlacement, ShowsAtLeastOnePixelOfExtremePictures) {
    expect_placement({16384, 1}, {800, 600}, {0, 299, 800, 1, 0});
    expect_placement({1, 16384}, {800, 600}, {399, 0, 1, 600, 0});
}

TEST(WindowExtent, UsesTheFactorIfItFits) {
    const Extent extent = window_extent({320, 256}, 3, {1920, 1080});
    EXPECT_EQ(extent.width, 960);
    EXPECT_EQ(extent.height, 768);
}

TEST(WindowExtent, UsesASmallerFactorIfThereIsLessRoom) {
    const Extent extent = window_extent({320, 256}, 4, {1280, 800});
    EXPECT_EQ(extent.width, 960);
    EXPECT_EQ(extent.height, 768);
}

TEST(WindowExtent, FitsTheRoomIfNoFactorDoes) {
    const Extent extent = window_extent({1600, 1200}, 2, {800, 700});
    EXPECT_EQ(extent.width, 800);
    EXPECT_EQ(extent.height, 600);
}
