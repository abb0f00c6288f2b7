// SPDX-License-Identifier: MIT
// graphics.library: drawing into bitmaps in memory.
#include "platform/graphics.h"

#include "platform/shared/bitmap.h"
#include "platform/shared/call_record.h"

using namespace host;

void InitRastPort(RastPort *context) {
    note_call("InitRastPort");
    initialise_context(*context);
}

void SetAPen(RastPort *context, ULONG pen) {
    note_call("SetAPen", pen);
    context->FgPen = static_cast<UBYTE>(pen);
}

void SetDrMd(RastPort *context, ULONG mode) {
    note_call("SetDrMd", mode);
    context->DrawMode = static_cast<UBYTE>(mode);
}

void Move(RastPort *context, WORD x, WORD y) {
    note_call("Move", x, y);
    context->cp_x = x;
    context->cp_y = y;
}

void Text(RastPort *context, CONST_STRPTR text, ULONG length) {
    note_call("Text", "\"" + std::string(text, length) + "\"");
    draw_text(*context, text, length);
}

void LoadRGB32(ViewPort *view_port, const ULONG *table) {
    note_call("LoadRGB32", table[0] >> 16);
    load_palette(view_port->ColorMap->colours, table);
}

void WriteChunkyPixels(RastPort *context, ULONG x_start, ULONG y_start, ULONG x_stop, ULONG y_stop,
                       const UBYTE *pixels, LONG bytes_per_row) {
    note_call("WriteChunkyPixels", x_start, y_start, x_stop, y_stop, bytes_per_row);
    write_pixels(*context, x_start, y_start, x_stop, y_stop, pixels, bytes_per_row);
    hooks.frame_written(pixels, bytes_per_row, static_cast<int>(y_stop - y_start + 1));
}
