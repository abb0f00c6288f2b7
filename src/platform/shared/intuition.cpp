// SPDX-License-Identifier: MIT
// intuition.library: screens, windows and screen buffers in memory.
#include "platform/intuition.h"

#include "platform/shared/call_record.h"
#include "platform/shared/room.h"
#include "platform/shared/screen_size.h"
#include "platform/shared/tags.h"

using namespace host;

bool host::has_possible_size(const ScreenRequest &screen) {
    return is_possible_side(screen.width) && is_possible_side(screen.height);
}

Screen *OpenScreenTagList(const NewScreen *, const TagItem *tags) {
    note_call("OpenScreenTagList", tags);
    const ScreenRequest request{
        static_cast<std::int32_t>(tag_value(tags, SA_DisplayID, 0)),
        static_cast<std::int32_t>(tag_value(tags, SA_Width, 0)),
        static_cast<std::int32_t>(tag_value(tags, SA_Height, 0)),
        reinterpret_cast<const char *>(tag_value(tags, SA_Title, tag_pointer(""))),
    };
    if (is_refused("OpenScreenTagList") || !hooks.is_possible(request)) {
        return nullptr;
    }
    auto screen = make_if_there_is_room<MemoryScreen>(request.width, request.height);
    if (screen == nullptr) {
        hooks.report_no_memory("a screen", request.width, request.height);
        return nullptr;
    }
    if (!hooks.show_screen(request)) {
        return nullptr;
    }
    state.screens.push_back(std::move(screen));
    return state.screens.back().get();
}

void CloseScreen(Screen *screen) {
    note_call("CloseScreen");
    hooks.hide_screen();
    release(state.screens, static_cast<MemoryScreen *>(screen));
}

Window *OpenWindowTagList(const NewWindow *, const TagItem *tags) {
    note_call("OpenWindowTagList", tags);
    if (is_refused("OpenWindowTagList")) {
        return nullptr;
    }
    auto *screen = static_cast<MemoryScreen *>(
        reinterpret_cast<Screen *>(tag_value(tags, WA_CustomScreen, tag_pointer(nullptr))));
    auto window = std::make_unique<MemoryWindow>();
    initialise_context(window->context);
    window->context.BitMap = screen->shown;
    window->RPort = &window->context;
    window->UserPort = &window->port;
    state.windows.push_back(std::move(window));
    return state.windows.back().get();
}

void CloseWindow(Window *window) {
    note_call("CloseWindow");
    hooks.drop_events();
    // The window's port closes with it. If the program ended while it handled an event, that is taken back.
    state.messages.clear();
    release(state.windows, static_cast<MemoryWindow *>(window));
}

ScreenBuffer *AllocScreenBuffer(Screen *screen, BitMap *, ULONG flags) {
    note_call("AllocScreenBuffer", flags);
    if (is_refused("AllocScreenBuffer")) {
        return nullptr;
    }
    BitMap &bitmap = static_cast<MemoryScreen *>(screen)->bitmap;
    auto buffer = std::make_unique<MemoryBuffer>();
    if ((flags & SB_SCREEN_BITMAP) != 0) {
        buffer->sb_BitMap = &bitmap;
    } else {
        buffer->own = make_if_there_is_room<BitMap>(bitmap.width, bitmap.height);
        if (buffer->own == nullptr) {
            hooks.report_no_memory("a buffer of a screen", bitmap.width, bitmap.height);
            return nullptr;
        }
        buffer->sb_BitMap = buffer->own.get();
    }
    state.buffers.push_back(std::move(buffer));
    return state.buffers.back().get();
}

void FreeScreenBuffer(Screen *, ScreenBuffer *buffer) {
    note_call("FreeScreenBuffer");
    release(state.buffers, static_cast<MemoryBuffer *>(buffer));
}

ULONG ChangeScreenBuffer(Screen *screen, ScreenBuffer *buffer) {
    note_call("ChangeScreenBuffer");
    static_cast<MemoryScreen *>(screen)->shown = buffer->sb_BitMap;
    return 1;
}

/// Only recorded: a host hides the pointer in its own way, so this image is never seen.
void SetPointer(Window *, const UWORD *, LONG height, LONG width, LONG x_offset, LONG y_offset) {
    note_call("SetPointer", height, width, x_offset, y_offset);
}
