// SPDX-License-Identifier: MIT
// Opens and closes the display in a fixed order, and asks for its mode.
#include "display/screen.h"

#include "core/fatal_exit.h"
#include "display/frame_buffers.h"
#include "display/palette.h"
#include "main_68k/viewer_state.h"
#include "platform/asl.h"

#include <cassert>
#include <cstdio>

Screen *myscreen = nullptr;
Window *window = nullptr;
std::array<ScreenBuffer *, 3> shown_buffers{};
RastPort display_context{};

namespace {

/// The screen buffers that the program owns; null after they are freed. Written in this file only.
std::array<ScreenBuffer *, 3> screen_buffers{};

/// The window's drawing context while the window is open. Nothing draws through it.
RastPort *window_context = nullptr;

/// An invisible pointer: two empty rows of two words each, between two words of zeros as every pointer image
/// has them. Never written, but SetPointer takes an image that is not const.
std::array<UWORD, 8> blank_pointer{};

constexpr LONG blank_pointer_height = 2;
constexpr LONG blank_pointer_width = 16;

/// Ends an array of pens.
constexpr UWORD pens_end = 0xFFFF;

void open_screen() {
    static const std::array<UWORD, 13> pens{0, 1, 1, 2, 1, 3, 2, 0, 2, 1, 2, 1, pens_end};
    static const TextAttr font{"topaz.font", 8, 0, 1};
    const std::array<TagItem, 13> tags{{
        {SA_DisplayID, static_cast<ULONG>(viewer.ModeID)},
        {SA_Overscan, OSCAN_TEXT},
        {SA_Width, static_cast<ULONG>(viewer.width)},
        {SA_Height, static_cast<ULONG>(viewer.height)},
        {SA_Depth, 8},
        {SA_AutoScroll, TRUE},
        {SA_Pens, tag_pointer(pens.data())},
        {SA_Title, tag_pointer("<Esc> to quit.")},
        {SA_ShowTitle, FALSE},
        {SA_Quiet, TRUE},
        {SA_Interleaved, TRUE},
        {SA_Font, tag_pointer(&font)},
        {TAG_DONE, 0},
    }};
    myscreen = OpenScreenTagList(nullptr, tags.data());
    if (myscreen == nullptr) {
        fatal_exit("Couldn't open screen\n");
    }
}

void open_window() {
    constexpr ULONG events =
        IDCMP_MOUSEBUTTONS | IDCMP_MOUSEMOVE | IDCMP_RAWKEY | IDCMP_DELTAMOVE | IDCMP_VANILLAKEY;
    const std::array<TagItem, 10> tags{{
        {WA_Activate, TRUE},
        {WA_ReportMouse, TRUE},
        {WA_IDCMP, events},
        {WA_Borderless, TRUE},
        {WA_RMBTrap, TRUE},
        {WA_SizeBRight, TRUE},
        {WA_CustomScreen, tag_pointer(myscreen)},
        // WA_RMBTrap a second time, by its number: the right button selects modes and must never open a menu.
        {WA_Dummy + 0x27, TRUE},
        {WA_NoCareRefresh, TRUE},
        {TAG_DONE, 0},
    }};
    window = OpenWindowTagList(nullptr, tags.data());
    if (window == nullptr) {
        fatal_exit("Couldn't open window\n");
    }
    window_context = window->RPort;
}

/// Allocates all three buffers before it checks any of them.
void allocate_screen_buffers() {
    constexpr std::array<ULONG, 3> flags{SB_SCREEN_BITMAP, 0, 0};
    bool complete = true;
    for (std::size_t slot = 0; slot < flags.size(); ++slot) {
        screen_buffers[slot] = AllocScreenBuffer(myscreen, nullptr, flags[slot]);
        shown_buffers[slot] = screen_buffers[slot];
        complete = complete && screen_buffers[slot] != nullptr;
    }
    if (!complete) {
        // The message appears twice on purpose: as a line, and without a line end from fatal_exit.
        std::puts("AllocScreenBuffer() failed");
        fatal_exit("AllocScreenBuffer() failed");
    }
}

void free_screen_buffer(ScreenBuffer *&buffer) {
    if (buffer != nullptr) {
        FreeScreenBuffer(myscreen, buffer);
        buffer = nullptr;
    }
}

} // namespace

void open_display() {
    allocate_frame_buffers(viewer.width, viewer.height);
    open_screen();
    open_window();
    assert(myscreen != nullptr);
    allocate_screen_buffers();

    InitRastPort(&display_context);
    display_context.BitMap = screen_buffers[0]->sb_BitMap;
    SetAPen(&display_context, 255);
    SetDrMd(&display_context, JAM2);

    build_palette();
    SetPointer(window, blank_pointer.data(), blank_pointer_height, blank_pointer_width, 0, 0);
}

void close_display() {
    if (screen_buffers[0] != nullptr) {
        ChangeScreenBuffer(myscreen, screen_buffers[0]);
        std::puts("changescreenbuffer done");
        std::fflush(stdout);
        WaitTOF();
        WaitTOF();
    }
    for (ScreenBuffer *&buffer : screen_buffers) {
        free_screen_buffer(buffer);
    }
    if (window != nullptr) {
        CloseWindow(window);
        window = nullptr;
        window_context = nullptr;
    }
    if (myscreen != nullptr) {
        CloseScreen(myscreen);
        myscreen = nullptr;
    }
    release_frame_buffers();
}

void choose_display_mode() {
    close_display();
    constexpr std::array<TagItem, 4> tags{{
        {ASLSM_DoWidth, TRUE},
        {ASLSM_DoHeight, TRUE},
        {ASLSM_DoOverscanType, TRUE},
        {TAG_DONE, 0},
    }};
    auto *requester = static_cast<ScreenModeRequester *>(AllocAslRequest(ASL_ScreenModeRequest, tags.data()));
    if (requester != nullptr) {
        // A cancelled requester counts as confirmed.
        AslRequest(requester, nullptr);
        viewer.ModeID = static_cast<std::int32_t>(requester->sm_DisplayID);
        viewer.width = static_cast<std::int32_t>(requester->sm_DisplayWidth);
        viewer.height = static_cast<std::int32_t>(requester->sm_DisplayHeight);
        FreeAslRequest(requester);
        std::printf("display parameters: 0x%08x, %d, %d\n", static_cast<unsigned>(viewer.ModeID),
                    viewer.width, viewer.height);
    }
    open_display();
}
