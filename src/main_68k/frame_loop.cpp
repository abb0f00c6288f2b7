// SPDX-License-Identifier: MIT
// A pass consists of four timed stages.
#include "main_68k/frame_loop.h"

#include "display/overlay_text.h"
#include "display/presentation.h"
#include "display/screen.h"
#include "main_68k/commands.h"
#include "main_68k/run_statistics.h"
#include "main_68k/viewer_state.h"
#include "pipeline/render_frame.h"

void start_frame_loop() {
    show_message("Zelvo");
    start_stage_clock();
    viewer.frames_drawn = 0;
}

bool run_pass() {
    frame_count += 1.0;
    const double last_frame_time = pass_seconds();
    start_stage_clock();

    render_frame();
    end_stage(stage_render);

    show_previous_frame();
    end_stage(stage_write);

    draw_message_line(last_frame_time);
    if (viewer.fps != 0) {
        draw_frame_rate(pass_seconds());
    }
    reset_display_bitmap();
    end_stage(stage_overlay);

    const Requests requests = handle_events(window->UserPort);
    viewer.spin_angle += viewer.rotate;
    swap_frame_buffers();
    end_stage(stage_input);

    if (requests.change_mode) {
        choose_display_mode();
    }
    ++viewer.frames_drawn;
    return requests.quit;
}
