// SPDX-License-Identifier: MIT
// The viewer in a page: what the page calls, apart from the user's input.
#include "display/frame_buffers.h"
#include "main_68k/frame_loop.h"
#include "main_68k/start_up.h"
#include "main_68k/viewer_state.h"
#include "platform/shared/blank_free_names.h"
#include "platform/shared/state.h"
#include "platform/web/page.h"
#include "platform/web/passes.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <string>

namespace {

/// The message line that the page was told last.
std::string announced;

void announce_message() {
    if (announced != viewer.message_line.data()) {
        announced = viewer.message_line.data();
        page_announce(announced.c_str());
    }
}

} // namespace

extern "C" {

/// Starts the program with an object; without one, with null, it asks for it.
void zelvo_begin(const char *object) {
    if (object != nullptr) {
        host::state.command_line = {host::without_blanks(object)};
    }
    begin_run(object != nullptr ? 2 : 0);
    web::note_end_of_pass();
}

/// Runs a pass after so many seconds of waiting; true if the user asked to quit.
bool zelvo_pass(double waited) {
    web::note_start_of_pass(waited);
    const bool quits = run_pass();
    announce_message();
    web::note_end_of_pass();
    return quits;
}

/// Ends the program.
void zelvo_end() {
    end_run();
}

/// The frame that the last pass showed, without its texts.
const std::uint8_t *zelvo_frame() {
    return chunkybuf1.get();
}

/// The settings that the page shows: mode, clear style, spin in tenths, and the flags of dots, frame rate,
/// flipped polygons, both sides and light.
const int *zelvo_state() {
    static std::array<int, 8> state;
    state = {viewer.obj_style,
             viewer.clear_style,
             static_cast<int>(std::lround(viewer.rotate * 10.0)),
             viewer.dots,
             viewer.fps,
             viewer.flip,
             viewer.doubleside,
             viewer.lightsource_rotating};
    return state.data();
}
}
