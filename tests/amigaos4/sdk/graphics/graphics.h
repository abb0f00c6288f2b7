// SPDX-License-Identifier: MIT
// graphics' structures, with the fields that the program uses.
#ifndef GRAPHICS_GRAPHICS_H
#define GRAPHICS_GRAPHICS_H

#include <exec/types.h>

struct ColorMap;
struct GfxBase;
struct Layer;

#pragma pack(2)

struct BitMap {
    UWORD BytesPerRow;
    UWORD Rows;
    UBYTE Flags;
    UBYTE Depth;
    UWORD pad;
    UBYTE *Planes[8];
};

struct RastPort {
    struct Layer *Layer;
    struct BitMap *BitMap;
    BYTE FgPen;
    BYTE BgPen;
    BYTE DrawMode;
    WORD cp_x;
    WORD cp_y;
};

struct ViewPort {
    struct ViewPort *Next;
    struct ColorMap *ColorMap;
};

struct TextAttr {
    CONST_STRPTR ta_Name;
    UWORD ta_YSize;
    UBYTE ta_Style;
    UBYTE ta_Flags;
};

#pragma pack()

#define JAM1 0
#define JAM2 1

#endif
