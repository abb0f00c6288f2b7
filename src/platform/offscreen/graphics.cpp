// SPDX-License-Identifier: MIT
// graphics.library offscreen: drawing in memory, and a display whose refresh never has to be waited for.
#include "platform/graphics.h"

#include "platform/offscreen/state.h"

#include <cstdio>
#include <cstdlib>

using namespace offscreen;

void InitRastPort(RastPort *context) {
    record("InitRastPort", {});
    host::initialise_context(*context);
}

void SetAPen(RastPort *context, ULONG pen) {
    record("SetAPen", {std::to_string(pen)});
    context->FgPen = static_cast<UBYTE>(pen);
}

void SetDrMd(RastPort *context, ULONG mode) {
    record("SetDrMd", {std::to_string(mode)});
    context->DrawMode = static_cast<UBYTE>(mode);
}

void Move(RastPort *context, WORD x, WORD y) {
    record("Move", {std::to_string(x), std::to_string(y)});
    context->cp_x = x;
    context->cp_y = y;
}

void Text(RastPort *context, CONST_STRPTR text, ULONG length) {
    record("Text", {"\"" + std::string(text, length) + "\""});
    host::draw_text(*context, text, length);
}

void WaitTOF() {
    record("WaitTOF", {});
}

void LoadRGB32(ViewPort *view_port, const ULONG *table) {
    record("LoadRGB32", {std::to_string(table[0] >> 16)});
    host::load_palette(view_port->ColorMap->colours, table);
}

namespace {

/// A program that misses its Esc would go on for ever.
void check_that_escape_ends_the_program() {
    if (state.is_escape_sent) {
        std::fputs("zelvo: the program goes on after Esc\n", stderr);
        std::abort();
    }
}

} // namespace

void WriteChunkyPixels(RastPort *context, ULONG x_start, ULONG y_start, ULONG x_stop, ULONG y_stop,
                       const UBYTE *pixels, LONG bytes_per_row) {
    record("WriteChunkyPixels", {std::to_string(x_start), std::to_string(y_start), std::to_string(x_stop),
                                 std::to_string(y_stop), std::to_string(bytes_per_row)});
    check_that_escape_ends_the_program();
    host::write_pixels(*context, x_start, y_start, x_stop, y_stop, pixels, bytes_per_row);
    ++state.pass;
    state.picture_due = true;
    if (state.setup.on_frame) {
        const auto rows = static_cast<int>(y_stop - y_start + 1);
        const std::size_t bytes = static_cast<std::size_t>(bytes_per_row) * static_cast<std::size_t>(rows);
        state.setup.on_frame({state.pass, bytes_per_row, rows, std::span(pixels, bytes),
                              state.screens.back()->colours.colours});
    }
}
