// SPDX-License-Identifier: MIT
// intuition.library: one screen, one window on it, its screen buffers, and the window's events.
#pragma once

#include "platform/graphics.h"

#ifdef __amigaos4__

#include <proto/intuition.h>

#else

struct IntuitionIFace;

/// What the program may use of a screen: the viewport into which its palette is loaded.
struct Screen {
    struct ViewPort ViewPort;
};

/// What the program may use of a window: its drawing context, and the port where its events arrive.
struct Window {
    RastPort *RPort;
    MsgPort *UserPort;
};

/// A bitmap that the screen can show.
struct ScreenBuffer {
    BitMap *sb_BitMap;
};

/// A font asked for by name.
struct TextAttr {
    CONST_STRPTR ta_Name;
    UWORD ta_YSize;
    UBYTE ta_Style;
    UBYTE ta_Flags;
};

/// An event of a window. With IDCMP_DELTAMOVE, MouseX and MouseY of a movement are relative.
struct IntuiMessage {
    Message ExecMessage;
    ULONG Class;
    UWORD Code;
    UWORD Qualifier;
    WORD MouseX;
    WORD MouseY;
};

struct NewScreen;
struct NewWindow;

constexpr ULONG SA_Dummy = TAG_USER + 32;
constexpr ULONG SA_Width = SA_Dummy + 0x03;
constexpr ULONG SA_Height = SA_Dummy + 0x04;
constexpr ULONG SA_Depth = SA_Dummy + 0x05;
constexpr ULONG SA_Title = SA_Dummy + 0x08;
constexpr ULONG SA_Font = SA_Dummy + 0x0B;
constexpr ULONG SA_DisplayID = SA_Dummy + 0x12;
constexpr ULONG SA_Overscan = SA_Dummy + 0x14;
constexpr ULONG SA_ShowTitle = SA_Dummy + 0x16;
constexpr ULONG SA_Quiet = SA_Dummy + 0x18;
constexpr ULONG SA_AutoScroll = SA_Dummy + 0x19;
constexpr ULONG SA_Pens = SA_Dummy + 0x1A;
constexpr ULONG SA_Interleaved = SA_Dummy + 0x22;
constexpr ULONG OSCAN_TEXT = 1;

constexpr ULONG WA_Dummy = TAG_USER + 99;
constexpr ULONG WA_IDCMP = WA_Dummy + 0x07;
constexpr ULONG WA_CustomScreen = WA_Dummy + 0x0D;
constexpr ULONG WA_ReportMouse = WA_Dummy + 0x23;
constexpr ULONG WA_NoCareRefresh = WA_Dummy + 0x24;
constexpr ULONG WA_Borderless = WA_Dummy + 0x25;
constexpr ULONG WA_Activate = WA_Dummy + 0x26;
constexpr ULONG WA_RMBTrap = WA_Dummy + 0x27;
constexpr ULONG WA_SizeBRight = WA_Dummy + 0x2B;

constexpr ULONG IDCMP_MOUSEBUTTONS = 0x00000008;
constexpr ULONG IDCMP_MOUSEMOVE = 0x00000010;
constexpr ULONG IDCMP_RAWKEY = 0x00000400;
constexpr ULONG IDCMP_DELTAMOVE = 0x00100000;
constexpr ULONG IDCMP_VANILLAKEY = 0x00200000;

constexpr UWORD SELECTDOWN = 0x68;
constexpr UWORD MENUDOWN = 0x69;

constexpr ULONG SB_SCREEN_BITMAP = 1;

/// Opens a black screen by tags; null if the mode or the size cannot be shown.
Screen *OpenScreenTagList(const NewScreen *reserved, const TagItem *tags);

/// Closes a screen whose windows are closed.
void CloseScreen(Screen *screen);

/// Opens a window by tags on the screen of WA_CustomScreen; null if that fails.
Window *OpenWindowTagList(const NewWindow *reserved, const TagItem *tags);

/// Closes a window and drops the events that still wait at its port.
void CloseWindow(Window *window);

/// A buffer with a bitmap of the screen's size: the screen's own bitmap with SB_SCREEN_BITMAP, otherwise a
/// new black one. Null if that fails.
ScreenBuffer *AllocScreenBuffer(Screen *screen, BitMap *reserved, ULONG flags);

/// Frees a screen buffer. The screen's own bitmap stays with the screen.
void FreeScreenBuffer(Screen *screen, ScreenBuffer *buffer);

/// Makes the screen show this buffer; 0 if it cannot do so yet.
ULONG ChangeScreenBuffer(Screen *screen, ScreenBuffer *buffer);

/// Gives the window a pointer image of `height` rows; rows of zeros make it invisible.
void SetPointer(Window *window, const UWORD *image, LONG height, LONG width, LONG x_offset, LONG y_offset);

#endif
