// SPDX-License-Identifier: MIT
// graphics.library on a desktop: drawing into the screen's bitmap, which is presented once a pass.
#include "platform/graphics.h"

#include "platform/sdl/picture_window.h"
#include "platform/sdl/state.h"

using namespace desktop;

void InitRastPort(RastPort *context) {
    host::initialise_context(*context);
}

void SetAPen(RastPort *context, ULONG pen) {
    context->FgPen = static_cast<UBYTE>(pen);
}

void SetDrMd(RastPort *context, ULONG mode) {
    context->DrawMode = static_cast<UBYTE>(mode);
}

void Move(RastPort *context, WORD x, WORD y) {
    context->cp_x = x;
    context->cp_y = y;
}

void Text(RastPort *context, CONST_STRPTR text, ULONG length) {
    host::draw_text(*context, text, length);
}

void WaitTOF() {
    wait_for_display();
}

void LoadRGB32(ViewPort *view_port, const ULONG *table) {
    host::load_palette(view_port->ColorMap->colours, table);
}

void WriteChunkyPixels(RastPort *context, ULONG x_start, ULONG y_start, ULONG x_stop, ULONG y_stop,
                       const UBYTE *pixels, LONG bytes_per_row) {
    host::write_pixels(*context, x_start, y_start, x_stop, y_stop, pixels, bytes_per_row);
    state.picture_due = true;
}
