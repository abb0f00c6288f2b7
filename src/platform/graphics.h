// SPDX-License-Identifier: MIT
// graphics.library: drawing into a bitmap, loading a palette, waiting for the display's refresh.
#pragma once

#include "platform/exec.h"

#ifdef __amigaos4__

#include <proto/graphics.h>

#else

struct GraphicsIFace;
struct ColorMap;

/// An 8-bit indexed picture. Only the host knows its contents.
struct BitMap;

/// The part of a screen into which its palette is loaded.
struct ViewPort {
    struct ColorMap *ColorMap;
};

/// A drawing context: target, pen, mode and pen position.
struct RastPort {
    struct BitMap *BitMap;
    UBYTE FgPen;
    UBYTE BgPen;
    UBYTE DrawMode;
    WORD cp_x;
    WORD cp_y;
};

constexpr UBYTE JAM1 = 0;
constexpr UBYTE JAM2 = 1;

/// Sets a drawing context to the system's defaults: no bitmap, foreground pen 255, background pen 0, JAM2,
/// and the default text font.
void InitRastPort(RastPort *context);

/// Sets the foreground pen.
void SetAPen(RastPort *context, ULONG pen);

/// Sets the drawing mode: JAM1 draws a text's foreground alone, JAM2 its cells' background as well.
void SetDrMd(RastPort *context, ULONG mode);

/// Moves the pen; y is the baseline of a text drawn next.
void Move(RastPort *context, WORD x, WORD y);

/// Draws the first `length` characters of a text at the pen and moves the pen past them; clipped to the
/// bitmap.
void Text(RastPort *context, CONST_STRPTR text, ULONG length);

/// Waits for the next vertical blank.
void WaitTOF();

/// Loads palette entries from a table: a word (count << 16 | first entry), then for each entry three words
/// for red, green and blue, with the level in the top byte, and a zero word at the end.
void LoadRGB32(ViewPort *view_port, const ULONG *table);

/// Writes one byte per pixel into the rectangle (x_start, y_start) to (x_stop, y_stop), both inclusive, from
/// rows of `bytes_per_row`; clipped to the bitmap.
void WriteChunkyPixels(RastPort *context, ULONG x_start, ULONG y_start, ULONG x_stop, ULONG y_stop,
                       const UBYTE *pixels, LONG bytes_per_row);

#endif
