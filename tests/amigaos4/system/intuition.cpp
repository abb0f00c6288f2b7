// SPDX-License-Identifier: MIT
// intuition.library: screens, windows and screen buffers that are never shown.
#include <proto/intuition.h>

#include "record.h"

#include <sstream>
#include <string>

namespace {

ULONG tag(const TagItem *tags, ULONG wanted) {
    for (; tags->ti_Tag != TAG_DONE; ++tags) {
        if (tags->ti_Tag == wanted) {
            return tags->ti_Data;
        }
    }
    return 0;
}

/// Records a call with its tags in hexadecimal, as NUMBER=VALUE, where NUMBER counts from TAG_USER. A pointer
/// is only recorded as set.
void record_tags(const char *call, const TagItem *tags) {
    std::ostringstream line;
    line << call << std::hex;
    for (; tags->ti_Tag != TAG_DONE; ++tags) {
        line << ' ' << tags->ti_Tag - TAG_USER << '=';
        switch (tags->ti_Tag) {
        case SA_Font:
        case SA_Pens:
        case SA_Title:
        case WA_CustomScreen:
            line << (tags->ti_Data != 0 ? "set" : "null");
            break;
        default:
            line << tags->ti_Data;
        }
    }
    amiga::record("%s", line.str().c_str());
}

void record_screen(const TagItem *tags) {
    record_tags("OpenScreenTagList", tags);
    const auto *font = reinterpret_cast<const TextAttr *>(tag(tags, SA_Font));
    amiga::record("  title \"%s\", font %s %d %d %d", reinterpret_cast<const char *>(tag(tags, SA_Title)),
                  font->ta_Name, font->ta_YSize, font->ta_Style, font->ta_Flags);
    std::string pens;
    for (const auto *pen = reinterpret_cast<const UWORD *>(tag(tags, SA_Pens)); *pen != 0xFFFF; ++pen) {
        pens += " " + std::to_string(*pen);
    }
    amiga::record("  pens%s", pens.c_str());
}

BitMap *new_bitmap(const Screen &screen) {
    auto *bitmap = new BitMap{};
    bitmap->BytesPerRow = static_cast<UWORD>(screen.Width);
    bitmap->Rows = static_cast<UWORD>(screen.Height);
    bitmap->Depth = 8;
    return bitmap;
}

} // namespace

Screen *IntuitionIFace::OpenScreenTagList(const NewScreen *, const TagItem *tags) {
    record_screen(tags);
    if (amiga::refuses("OpenScreenTagList")) {
        return nullptr;
    }
    amiga::hold("screens", +1);
    auto *screen = new Screen{};
    screen->Width = static_cast<WORD>(tag(tags, SA_Width));
    screen->Height = static_cast<WORD>(tag(tags, SA_Height));
    screen->ViewPort.ColorMap = reinterpret_cast<ColorMap *>(screen);
    return screen;
}

BOOL IntuitionIFace::CloseScreen(Screen *screen) {
    amiga::record("CloseScreen");
    amiga::hold("screens", -1);
    delete screen;
    return TRUE;
}

Window *IntuitionIFace::OpenWindowTagList(const NewWindow *, const TagItem *tags) {
    record_tags("OpenWindowTagList", tags);
    if (amiga::refuses("OpenWindowTagList")) {
        return nullptr;
    }
    amiga::hold("windows", +1);
    auto *window = new Window{};
    window->RPort = new RastPort{};
    window->UserPort = new MsgPort{};
    return window;
}

VOID IntuitionIFace::CloseWindow(Window *window) {
    amiga::record("CloseWindow");
    amiga::hold("windows", -1);
    delete window->RPort;
    delete window->UserPort;
    delete window;
}

ScreenBuffer *IntuitionIFace::AllocScreenBuffer(Screen *screen, BitMap *, ULONG flags) {
    amiga::record("AllocScreenBuffer %lu", flags);
    if (amiga::refuses("AllocScreenBuffer")) {
        return nullptr;
    }
    amiga::hold("screen buffers", +1);
    return new ScreenBuffer{new_bitmap(*screen), nullptr};
}

VOID IntuitionIFace::FreeScreenBuffer(Screen *, ScreenBuffer *buffer) {
    amiga::record("FreeScreenBuffer");
    amiga::hold("screen buffers", -1);
    delete buffer->sb_BitMap;
    delete buffer;
}

ULONG IntuitionIFace::ChangeScreenBuffer(Screen *, ScreenBuffer *) {
    amiga::record("ChangeScreenBuffer");
    return 1;
}

VOID IntuitionIFace::SetPointer(Window *, UWORD *pointer, WORD height, WORD width, WORD x_offset,
                                WORD y_offset) {
    int words = 0;
    // An image has two words per row, with two zero words before and after all rows.
    for (int at = 0; at < 2 * height + 4; ++at) {
        words += pointer[at] != 0 ? 1 : 0;
    }
    amiga::record("SetPointer %d x %d at %d,%d, %d words not zero", width, height, x_offset, y_offset, words);
}
