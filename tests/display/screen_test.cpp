// SPDX-License-Identifier: MIT
// Tests of opening, closing and changing the display, call by call.
#include "display/frame_buffers.h"
#include "display/screen.h"
#include "support/open_display.h"

#include <malloc.h>

namespace {

using Lines = std::vector<std::string>;

/// The calls that open a display of this mode and size.
Lines opening(const std::string &mode, const std::string &width, const std::string &height) {
    return {
        "OpenScreenTagList(SA_DisplayID=" + mode + ", SA_Overscan=1, SA_Width=" + width +
            ", SA_Height=" + height +
            ", SA_Depth=8, SA_AutoScroll=1, SA_Pens=0 1 1 2 1 3 2 0 2 1 2 1, SA_Title=\"<Esc> to quit.\", "
            "SA_ShowTitle=0, SA_Quiet=1, SA_Interleaved=1, SA_Font=topaz.font/8/0/1)",
        // 3146776 is 0x00300418. The program sets the trap for the right mouse button twice.
        "OpenWindowTagList(WA_Activate=1, WA_ReportMouse=1, WA_IDCMP=3146776, WA_Borderless=1, "
        "WA_RMBTrap=1, WA_SizeBRight=1, WA_CustomScreen=set, WA_RMBTrap=1, WA_NoCareRefresh=1)",
        "AllocScreenBuffer(1)",
        "AllocScreenBuffer(0)",
        "AllocScreenBuffer(0)",
        "InitRastPort()",
        "SetAPen(255)",
        "SetDrMd(1)",
        "LoadRGB32(256)",
        "SetPointer(2, 16, 0, 0)",
    };
}

const Lines closing{
    "ChangeScreenBuffer()", "WaitTOF()",          "WaitTOF()",     "FreeScreenBuffer()",
    "FreeScreenBuffer()",   "FreeScreenBuffer()", "CloseWindow()", "CloseScreen()",
};

const Lines asking{
    "AllocAslRequest(2, ASLSM_DoWidth=1, ASLSM_DoHeight=1, ASLSM_DoOverscanType=1)",
    "AslRequest()",
    "FreeAslRequest()",
};

Lines joined(const std::vector<Lines> &lists) {
    Lines all;
    for (const Lines &list : lists) {
        all.insert(all.end(), list.begin(), list.end());
    }
    return all;
}

class OpenDisplay : public DisplayTest {};
class CloseDisplay : public DisplayTest {};
class ChooseDisplayMode : public DisplayTest {};

TEST(DisplayTags, AreTheSystemsNumbers) {
    EXPECT_EQ(IDCMP_MOUSEBUTTONS | IDCMP_MOUSEMOVE | IDCMP_RAWKEY | IDCMP_DELTAMOVE | IDCMP_VANILLAKEY,
              0x00300418U);
    EXPECT_EQ(WA_RMBTrap, 0x8000008AU);
}

TEST_F(OpenDisplay, MakesEveryCallInOrderWithItsTags) {
    open_display();
    EXPECT_EQ(new_calls(), opening("0", "320", "256"));
    EXPECT_EQ(printed(), "");
}

TEST_F(OpenDisplay, UsesModeAndSizeOfTheState) {
    viewer.ModeID = -2147479552;
    viewer.width = 333;
    viewer.height = 217;
    open_display();
    EXPECT_EQ(new_calls(), opening("2147487744", "333", "217"));
    EXPECT_EQ(frame_width, 333);
    EXPECT_EQ(frame_height, 217);
}

TEST_F(OpenDisplay, HoldsAScreenAWindowAndThreeBuffers) {
    open_display();
    EXPECT_EQ(offscreen::held(),
              (Lines{"screen", "screen buffer", "screen buffer", "screen buffer", "window"}));
    EXPECT_NE(myscreen, nullptr);
    ASSERT_NE(window, nullptr);
    EXPECT_NE(window->RPort, nullptr);
}

/// Whether an allocation has this size. The heap may round it up, but by less than a page.
void expect_bytes(void *memory, std::size_t bytes) {
    ASSERT_NE(memory, nullptr);
    EXPECT_GE(malloc_usable_size(memory), bytes);
    EXPECT_LT(malloc_usable_size(memory), bytes + 4096 + 16);
}

TEST_F(OpenDisplay, AllocatesTheFiveFrameBuffersOfTheDefaultSize) {
    open_display();
    expect_bytes(chunkybuf1.get(), 81920);
    expect_bytes(chunkybuf2.get(), 81920);
    expect_bytes(planarbuf1.get(), 81920);
    expect_bytes(planarbuf2.get(), 81920);
    expect_bytes(zbuf.get(), 163840);
    EXPECT_EQ(frame_pixels(), 81920U);
}

TEST_F(OpenDisplay, StartsWithBlackFramesAndNoDepths) {
    open_display();
    EXPECT_EQ(std::count(chunkybuf1.get(), chunkybuf1.get() + 81920, 0), 81920);
    EXPECT_EQ(std::count(chunkybuf2.get(), chunkybuf2.get() + 81920, 0), 81920);
    EXPECT_EQ(std::count(zbuf.get(), zbuf.get() + 81920, 0), 81920);
}

TEST_F(OpenDisplay, DrawsIntoTheScreensBitmap) {
    open_display();
    BitMap *visible = host::state.screens.back()->shown;
    EXPECT_EQ(display_context.BitMap, visible);
    EXPECT_EQ(display_context.FgPen, 255);
    EXPECT_EQ(display_context.BgPen, 0);
    EXPECT_EQ(display_context.DrawMode, JAM2);
    ASSERT_NE(shown_buffers[0], nullptr);
    EXPECT_EQ(shown_buffers[0]->sb_BitMap, visible);
    ASSERT_NE(shown_buffers[1], nullptr);
    EXPECT_NE(shown_buffers[1]->sb_BitMap, visible);
    ASSERT_NE(shown_buffers[2], nullptr);
    EXPECT_NE(shown_buffers[2]->sb_BitMap, visible);
    EXPECT_NE(shown_buffers[2]->sb_BitMap, shown_buffers[1]->sb_BitMap);
}

TEST_F(OpenDisplay, LeavesThePalettesMessage) {
    viewer.message_timer = -1.0;
    open_display();
    EXPECT_STREQ(viewer.message_line.data(), "R-gamma:1.00 G-gamma:1.00 B-gamma:1.00");
    EXPECT_EQ(viewer.message_timer, 2.0);
}

TEST_F(OpenDisplay, AcceptsTheLargestAndTheSmallestSides) {
    for (const auto &[width, height] : {std::pair{16384, 1}, {1, 16384}, {1, 1}}) {
        viewer.width = width;
        viewer.height = height;
        open_display();
        EXPECT_NE(myscreen, nullptr);
        EXPECT_EQ(frame_pixels(), static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        close_display();
    }
}

TEST_F(CloseDisplay, GivesEverythingBackInOrder) {
    open_display();
    (void)new_calls();
    close_display();
    EXPECT_EQ(new_calls(), closing);
    EXPECT_EQ(printed(), "changescreenbuffer done\n");
    EXPECT_EQ(offscreen::held(), Lines{});
    EXPECT_EQ(myscreen, nullptr);
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(chunkybuf1, nullptr);
    EXPECT_EQ(chunkybuf2, nullptr);
    EXPECT_EQ(zbuf, nullptr);
    EXPECT_EQ(planarbuf1, nullptr);
    EXPECT_EQ(planarbuf2, nullptr);
}

TEST_F(CloseDisplay, DoesNothingTheSecondTime) {
    open_display();
    close_display();
    (void)new_calls();
    (void)printed();
    close_display();
    EXPECT_EQ(new_calls(), Lines{});
    EXPECT_EQ(printed(), "");
}

TEST_F(CloseDisplay, DoesNothingBeforeTheFirstOpening) {
    close_display();
    EXPECT_EQ(new_calls(), Lines{});
    EXPECT_EQ(printed(), "");
}

TEST_F(CloseDisplay, LetsTheDisplayOpenAgainInAnotherSize) {
    open_display();
    close_display();
    (void)new_calls();
    viewer.width = 64;
    viewer.height = 48;
    open_display();
    EXPECT_EQ(new_calls(), opening("0", "64", "48"));
    EXPECT_EQ(frame_pixels(), 64U * 48U);
    expect_bytes(zbuf.get(), 2 * 64 * 48);
    EXPECT_EQ(host::state.screens.back()->bitmap.width, 64);
}

TEST_F(ChooseDisplayMode, ClosesAsksAndReopens) {
    open_display();
    (void)new_calls();
    offscreen::state.setup.answers = {{{}, offscreen::ModeAnswer{0x29004, 640, 480}}};
    choose_display_mode();
    EXPECT_EQ(new_calls(), joined({closing, asking, opening("167940", "640", "480")}));
    EXPECT_EQ(printed(), "changescreenbuffer done\ndisplay parameters: 0x00029004, 640, 480\n");
    EXPECT_EQ(viewer.ModeID, 0x29004);
    EXPECT_EQ(viewer.width, 640);
    EXPECT_EQ(viewer.height, 480);
    EXPECT_EQ(frame_width, 640);
    EXPECT_EQ(frame_height, 480);
}

TEST_F(ChooseDisplayMode, OpensAClosedDisplay) {
    choose_display_mode();
    EXPECT_EQ(new_calls(), joined({asking, opening("0", "320", "256")}));
    EXPECT_EQ(printed(), "display parameters: 0x00000000, 320, 256\n");
}

TEST_F(ChooseDisplayMode, UsesTheContentsOfACancelledRequester) {
    viewer.ModeID = 3;
    viewer.width = 64;
    viewer.height = 48;
    offscreen::state.setup.default_mode = {0xDEADBEEF, 100, 75};
    offscreen::state.setup.answers = {offscreen::Answer{}};
    choose_display_mode();
    EXPECT_EQ(new_calls(), joined({asking, opening("3735928559", "100", "75")}));
    EXPECT_EQ(printed(), "display parameters: 0xdeadbeef, 100, 75\n");
    EXPECT_EQ(static_cast<std::uint32_t>(viewer.ModeID), 0xDEADBEEFU);
    EXPECT_EQ(viewer.width, 100);
    EXPECT_EQ(viewer.height, 75);
}

TEST_F(ChooseDisplayMode, KeepsTheOldSettingsWithoutARequester) {
    viewer.ModeID = 3;
    viewer.width = 64;
    viewer.height = 48;
    offscreen::state.setup.refused = {"AllocAslRequest"};
    choose_display_mode();
    EXPECT_EQ(new_calls(), joined({{asking[0]}, opening("3", "64", "48")}));
    EXPECT_EQ(printed(), "");
}

TEST_F(ChooseDisplayMode, KeepsTheTiltAndTheSpin) {
    open_display();
    viewer.tilt_x = 12;
    viewer.spin_angle = 3.5;
    choose_display_mode();
    EXPECT_EQ(viewer.tilt_x, 12);
    EXPECT_EQ(viewer.spin_angle, 3.5);
}

} // namespace
