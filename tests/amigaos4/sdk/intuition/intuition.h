// SPDX-License-Identifier: MIT
// intuition's structures, with the fields that the program uses, its tags and events.
#ifndef INTUITION_INTUITION_H
#define INTUITION_INTUITION_H

#include <exec/exec.h>
#include <graphics/graphics.h>

struct DBufInfo;
struct IntuitionBase;
struct NewScreen;
struct NewWindow;

#pragma pack(2)

struct Screen {
    struct Screen *NextScreen;
    WORD Width;
    WORD Height;
    struct ViewPort ViewPort;
};

struct Window {
    struct Window *NextWindow;
    WORD Width;
    struct RastPort *RPort;
    struct MsgPort *UserPort;
};

struct ScreenBuffer {
    struct BitMap *sb_BitMap;
    struct DBufInfo *sb_DBufInfo;
};

struct IntuiMessage {
    struct Message ExecMessage;
    ULONG Class;
    UWORD Code;
    UWORD Qualifier;
    APTR IAddress;
    int16 MouseX;
    int16 MouseY;
};

#pragma pack()

#define NOT !
#define FOREVER for (;;)
#define SIGN(x) (((x) > 0) - ((x) < 0))

#define SA_Dummy (TAG_USER + 32)
#define SA_Width (SA_Dummy + 0x0003)
#define SA_Height (SA_Dummy + 0x0004)
#define SA_Depth (SA_Dummy + 0x0005)
#define SA_Title (SA_Dummy + 0x0008)
#define SA_Font (SA_Dummy + 0x000B)
#define SA_DisplayID (SA_Dummy + 0x0012)
#define SA_Overscan (SA_Dummy + 0x0014)
#define SA_ShowTitle (SA_Dummy + 0x0016)
#define SA_Quiet (SA_Dummy + 0x0018)
#define SA_AutoScroll (SA_Dummy + 0x0019)
#define SA_Pens (SA_Dummy + 0x001A)
#define SA_Interleaved (SA_Dummy + 0x0022)
#define OSCAN_TEXT 1

#define WA_Dummy (TAG_USER + 99)
#define WA_IDCMP (WA_Dummy + 0x07)
#define WA_CustomScreen (WA_Dummy + 0x0D)
#define WA_ReportMouse (WA_Dummy + 0x23)
#define WA_NoCareRefresh (WA_Dummy + 0x24)
#define WA_Borderless (WA_Dummy + 0x25)
#define WA_Activate (WA_Dummy + 0x26)
#define WA_RMBTrap (WA_Dummy + 0x27)
#define WA_SizeBRight (WA_Dummy + 0x2B)

#define IDCMP_MOUSEBUTTONS 0x00000008
#define IDCMP_MOUSEMOVE 0x00000010
#define IDCMP_RAWKEY 0x00000400
#define IDCMP_DELTAMOVE 0x00100000
#define IDCMP_VANILLAKEY 0x00200000

#define SELECTDOWN 0x68
#define MENUDOWN 0x69

#define SB_SCREEN_BITMAP 1

#endif
