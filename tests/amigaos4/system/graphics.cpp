// SPDX-License-Identifier: MIT
// graphics.library. A bitmap has only a size; written pixels go into the file of frames.
#include <proto/graphics.h>

#include "record.h"
#include "script.h"

#include <cstdio>

VOID GraphicsIFace::InitRastPort(RastPort *context) {
    amiga::record("InitRastPort");
    *context = {};
    context->FgPen = -1;
    context->DrawMode = JAM2;
}

VOID GraphicsIFace::SetAPen(RastPort *context, UBYTE pen) {
    amiga::record("SetAPen %d", pen);
    context->FgPen = static_cast<BYTE>(pen);
}

VOID GraphicsIFace::SetDrMd(RastPort *context, UBYTE mode) {
    amiga::record("SetDrMd %d", mode);
    context->DrawMode = static_cast<BYTE>(mode);
}

VOID GraphicsIFace::Move(RastPort *context, WORD x, WORD y) {
    context->cp_x = x;
    context->cp_y = y;
}

VOID GraphicsIFace::Text(RastPort *context, CONST_STRPTR text, UWORD count) {
    amiga::record("Text at %d %d: \"%.*s\"", context->cp_x, context->cp_y, count, text);
}

VOID GraphicsIFace::WaitTOF() {
    amiga::record("WaitTOF");
}

VOID GraphicsIFace::LoadRGB32(ViewPort *view_port, ULONG *table) {
    const ULONG count = table[0] >> 16;
    amiga::record("LoadRGB32 %lu from %lu: first %08lx, last %08lx, end %lu%s", count, table[0] & 0xFFFF,
                  table[1], table[3 * count], table[3 * count + 1],
                  view_port->ColorMap == nullptr ? ", no colour map" : "");
}

VOID GraphicsIFace::WriteChunkyPixels(RastPort *context, UWORD x_start, UWORD y_start, UWORD x_stop,
                                      UWORD y_stop, UBYTE *pixels, LONG bytes_per_row) {
    amiga::record("WriteChunkyPixels %d,%d to %d,%d, %ld a row, bitmap %d x %d", x_start, y_start, x_stop,
                  y_stop, bytes_per_row, context->BitMap->BytesPerRow, context->BitMap->Rows);
    amiga::begin_input_of_pass();
    static std::FILE *frames = std::fopen(amiga::told("AMIGA_FRAMES").c_str(), "wb");
    if (frames == nullptr) {
        return;
    }
    const int width = x_stop - x_start + 1;
    std::fprintf(frames, "P5\n%d %d\n255\n", width, y_stop - y_start + 1);
    for (int row = 0; row <= y_stop - y_start; ++row) {
        std::fwrite(pixels + row * bytes_per_row, 1, static_cast<std::size_t>(width), frames);
    }
}
