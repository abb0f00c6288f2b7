// SPDX-License-Identifier: MIT
// Draws the message line and the frame-rate counter into the display's drawing context.
#include "display/overlay_text.h"

#include "display/frame_buffers.h"
#include "display/screen.h"
#include "main_68k/viewer_state.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

std::array<double, 6> frame_rates{};

namespace {

/// Characters that are drawn. They include blanks, which erase the rest of a longer reading.
constexpr std::size_t frame_rate_characters = 10;

void draw_text(int x, int y, const char *text, std::size_t length) {
    Move(&display_context, static_cast<WORD>(x), static_cast<WORD>(y));
    Text(&display_context, text, static_cast<ULONG>(length));
}

} // namespace

void draw_message_line(double last_frame_time) {
    if (viewer.message_timer > 0.0) {
        const char *text = viewer.message_line.data();
        draw_text(1, 10, text, std::strlen(text));
        viewer.message_timer -= last_frame_time;
    }
}

void draw_frame_rate(double pass_seconds) {
    std::array<char, 19> text{"fps:100.00--------"};
    std::copy_backward(frame_rates.begin() + 1, frame_rates.end() - 1, frame_rates.end());
    frame_rates[1] = 1.0 / pass_seconds;
    frame_rates[0] =
        (frame_rates[1] + frame_rates[2] + frame_rates[3] + frame_rates[4] + frame_rates[5]) / 5.0;
    std::snprintf(text.data(), text.size(), "fps:%3.2f   ", frame_rates[0]);
    draw_text(1, frame_height - 10, text.data(), std::min(std::strlen(text.data()), frame_rate_characters));
}
