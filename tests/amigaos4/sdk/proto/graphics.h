// SPDX-License-Identifier: MIT
// graphics.library's calls.
#ifndef PROTO_GRAPHICS_H
#define PROTO_GRAPHICS_H

#include <exec/exec.h>
#include <graphics/graphics.h>

struct GraphicsIFace {
    struct InterfaceData Data;
    VOID InitRastPort(struct RastPort *context);
    VOID SetAPen(struct RastPort *context, UBYTE pen);
    VOID SetDrMd(struct RastPort *context, UBYTE mode);
    VOID Move(struct RastPort *context, WORD x, WORD y);
    VOID Text(struct RastPort *context, CONST_STRPTR text, UWORD count);
    VOID WaitTOF();
    VOID LoadRGB32(struct ViewPort *view_port, ULONG *table);
    VOID WriteChunkyPixels(struct RastPort *context, UWORD x_start, UWORD y_start, UWORD x_stop, UWORD y_stop,
                           UBYTE *pixels, LONG bytes_per_row);
};

extern struct Library *GfxBase;
extern struct GraphicsIFace *IGraphics;

#ifdef __USE_INLINE__
#define InitRastPort(context) IGraphics->InitRastPort((context))
#define SetAPen(context, pen) IGraphics->SetAPen((context), (pen))
#define SetDrMd(context, mode) IGraphics->SetDrMd((context), (mode))
#define Move(context, x, y) IGraphics->Move((context), (x), (y))
#define Text(context, text, count) IGraphics->Text((context), (text), (count))
#define WaitTOF() IGraphics->WaitTOF()
#define LoadRGB32(view_port, table) IGraphics->LoadRGB32((view_port), (table))
#define WriteChunkyPixels(context, x_start, y_start, x_stop, y_stop, pixels, bytes_per_row)                  \
    IGraphics->WriteChunkyPixels((context), (x_start), (y_start), (x_stop), (y_stop), (pixels),              \
                                 (bytes_per_row))
#endif

#endif
