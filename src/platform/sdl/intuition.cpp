// SPDX-License-Identifier: MIT
// intuition.library on a desktop: a screen is a bitmap in memory and the window that shows it.
#include "platform/intuition.h"

#include "platform/sdl/picture_window.h"
#include "platform/sdl/state.h"
#include "platform/shared/refused_screen.h"
#include "platform/shared/room.h"
#include "platform/shared/tags.h"

#include <cstdio>

using namespace desktop;

/// The events wait in the host's state.
struct MsgPort {};

namespace {

struct DesktopBuffer : ScreenBuffer {
    /// A bitmap of the buffer's own; none if it wraps the screen's.
    std::unique_ptr<BitMap> own;
};

struct DesktopWindow : Window {
    RastPort context{};
    MsgPort port;
};

} // namespace

Screen *OpenScreenTagList(const NewScreen *, const TagItem *tags) {
    const auto mode_id = static_cast<std::uint32_t>(host::tag_value(tags, SA_DisplayID, 0));
    const auto width = static_cast<std::int32_t>(host::tag_value(tags, SA_Width, 0));
    const auto height = static_cast<std::int32_t>(host::tag_value(tags, SA_Height, 0));
    const auto *title = reinterpret_cast<const char *>(host::tag_value(tags, SA_Title, tag_pointer("")));
    const DisplayMode *mode = find_display_mode(mode_id);
    if (mode == nullptr) {
        host::report_unknown_mode(state.settings_path, static_cast<std::int32_t>(mode_id));
    }
    if (host::report_impossible_sides(state.settings_path, width, height) || mode == nullptr) {
        return nullptr;
    }
    auto screen = host::make_if_there_is_room<DesktopScreen>(width, height);
    if (screen == nullptr) {
        std::fprintf(stderr, "zelvo: no memory for a screen of %ld x %ld\n", static_cast<long>(width),
                     static_cast<long>(height));
        return nullptr;
    }
    if (!open_picture_window({width, height}, *mode, std::string("Zelvo   ") + title)) {
        return nullptr;
    }
    state.current = {mode_id, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)};
    state.screen = std::move(screen);
    return state.screen.get();
}

void CloseScreen(Screen *) {
    close_picture_window();
    state.picture_due = false;
    state.screen.reset();
}

Window *OpenWindowTagList(const NewWindow *, const TagItem *) {
    auto window = std::make_unique<DesktopWindow>();
    host::initialise_context(window->context);
    window->context.BitMap = state.screen->shown;
    window->RPort = &window->context;
    window->UserPort = &window->port;
    return window.release();
}

void CloseWindow(Window *window) {
    state.waiting.clear();
    state.held.clear();
    const std::unique_ptr<DesktopWindow> closed(static_cast<DesktopWindow *>(window));
}

ScreenBuffer *AllocScreenBuffer(Screen *screen, BitMap *, ULONG flags) {
    BitMap &bitmap = static_cast<DesktopScreen *>(screen)->bitmap;
    auto buffer = std::make_unique<DesktopBuffer>();
    if ((flags & SB_SCREEN_BITMAP) != 0) {
        buffer->sb_BitMap = &bitmap;
    } else {
        buffer->own = host::make_if_there_is_room<BitMap>(bitmap.width, bitmap.height);
        if (buffer->own == nullptr) {
            std::fprintf(stderr, "zelvo: no memory for a buffer of a screen of %d x %d\n", bitmap.width,
                         bitmap.height);
            return nullptr;
        }
        buffer->sb_BitMap = buffer->own.get();
    }
    return buffer.release();
}

void FreeScreenBuffer(Screen *, ScreenBuffer *buffer) {
    const std::unique_ptr<DesktopBuffer> freed(static_cast<DesktopBuffer *>(buffer));
}

ULONG ChangeScreenBuffer(Screen *screen, ScreenBuffer *buffer) {
    static_cast<DesktopScreen *>(screen)->shown = buffer->sb_BitMap;
    return 1;
}

/// The pointer is the window's alone and hidden as long as it has the focus, so that its image is never seen.
void SetPointer(Window *, const UWORD *, LONG, LONG, LONG, LONG) {}
