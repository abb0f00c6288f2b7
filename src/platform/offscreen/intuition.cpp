// SPDX-License-Identifier: MIT
// intuition.library offscreen: screens, windows and screen buffers in memory.
#include "platform/intuition.h"

#include "platform/offscreen/state.h"
#include "platform/shared/room.h"
#include "platform/shared/screen_size.h"
#include "platform/shared/tags.h"

using namespace offscreen;

Screen *OpenScreenTagList(const NewScreen *, const TagItem *tags) {
    record("OpenScreenTagList", {tags_as_text(tags)});
    const auto width = static_cast<std::int32_t>(host::tag_value(tags, SA_Width, 0));
    const auto height = static_cast<std::int32_t>(host::tag_value(tags, SA_Height, 0));
    if (is_refused("OpenScreenTagList") || !host::is_possible_side(width) ||
        !host::is_possible_side(height)) {
        return nullptr;
    }
    auto screen = host::make_if_there_is_room<OffscreenScreen>(width, height);
    if (screen == nullptr) {
        return nullptr;
    }
    state.screens.push_back(std::move(screen));
    return state.screens.back().get();
}

void CloseScreen(Screen *screen) {
    record("CloseScreen", {});
    release(state.screens, static_cast<OffscreenScreen *>(screen));
}

Window *OpenWindowTagList(const NewWindow *, const TagItem *tags) {
    record("OpenWindowTagList", {tags_as_text(tags)});
    if (is_refused("OpenWindowTagList")) {
        return nullptr;
    }
    auto *screen = static_cast<OffscreenScreen *>(
        reinterpret_cast<Screen *>(host::tag_value(tags, WA_CustomScreen, tag_pointer(nullptr))));
    auto window = std::make_unique<OffscreenWindow>();
    host::initialise_context(window->context);
    window->context.BitMap = screen->shown;
    window->RPort = &window->context;
    window->UserPort = &window->port;
    state.windows.push_back(std::move(window));
    return state.windows.back().get();
}

void CloseWindow(Window *window) {
    record("CloseWindow", {});
    // The window's port goes with it, and with the port an event that the program ended in the middle of.
    state.messages.clear();
    release(state.windows, static_cast<OffscreenWindow *>(window));
}

ScreenBuffer *AllocScreenBuffer(Screen *screen, BitMap *, ULONG flags) {
    record("AllocScreenBuffer", {std::to_string(flags)});
    if (is_refused("AllocScreenBuffer")) {
        return nullptr;
    }
    auto &offscreen_screen = *static_cast<OffscreenScreen *>(screen);
    auto buffer = std::make_unique<OffscreenBuffer>();
    if ((flags & SB_SCREEN_BITMAP) != 0) {
        buffer->sb_BitMap = &offscreen_screen.bitmap;
    } else {
        buffer->own = host::make_if_there_is_room<BitMap>(offscreen_screen.bitmap.width,
                                                          offscreen_screen.bitmap.height);
        if (buffer->own == nullptr) {
            return nullptr;
        }
        buffer->sb_BitMap = buffer->own.get();
    }
    state.buffers.push_back(std::move(buffer));
    return state.buffers.back().get();
}

void FreeScreenBuffer(Screen *, ScreenBuffer *buffer) {
    record("FreeScreenBuffer", {});
    release(state.buffers, static_cast<OffscreenBuffer *>(buffer));
}

ULONG ChangeScreenBuffer(Screen *screen, ScreenBuffer *buffer) {
    record("ChangeScreenBuffer", {});
    static_cast<OffscreenScreen *>(screen)->shown = buffer->sb_BitMap;
    return 1;
}

void SetPointer(Window *, const UWORD *, LONG height, LONG width, LONG x_offset, LONG y_offset) {
    record("SetPointer", {std::to_string(height), std::to_string(width), std::to_string(x_offset),
                          std::to_string(y_offset)});
}
