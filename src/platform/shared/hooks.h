// SPDX-License-Identifier: MIT
// What each host adds to the system calls that all hosts share.
#pragma once

#include "platform/intuition.h"
#include "platform/shared/state.h"

#include <optional>
#include <string>

namespace host {

/// The screen that the program asks for.
struct ScreenRequest {
    std::int32_t mode_id;
    std::int32_t width;
    std::int32_t height;
    std::string title;
};

/// Whether a screen of this size is possible in any mode.
bool has_possible_size(const ScreenRequest &screen);

/// The functions of a host that the shared system calls use. Those that have a default may be left out.
struct Hooks {
    /// The window's next event; nothing if there is none. Called by every GetMsg. If a frame was written
    /// since the last call, the texts of the pass are drawn by now as well, and the picture can be shown.
    std::optional<IntuiMessage> (*next_event)();

    /// Lets the user answer a file requester and stores the answer in it; false if the user cancelled.
    bool (*ask_for_file)(Requester &requester);

    /// The same for a screen-mode requester.
    bool (*ask_for_mode)(ScreenModeRequester &requester);

    /// The mode and size that a screen-mode requester shows at first.
    ScreenModeRequester (*initial_mode)();

    /// Whether requesters can be shown.
    bool (*can_show_requesters)() = [] { return true; };

    /// Whether the host can show such a screen. Called before memory is taken for its bitmap.
    bool (*is_possible)(const ScreenRequest &screen) = has_possible_size;

    /// Shows a new screen, which is black; false if that fails.
    bool (*show_screen)(const ScreenRequest &screen) = [](const ScreenRequest &) { return true; };

    /// The screen is being closed.
    void (*hide_screen)() = [] {};

    /// Drops the events that still wait. The window is being closed.
    void (*drop_events)() = [] {};

    /// The program has written a frame: rows of pixels without padding. The program owns the memory.
    void (*frame_written)(const UBYTE *pixels, int width, int height);

    /// Reports that there is no memory for a screen, or a buffer of a screen, of this size.
    void (*report_no_memory)(const char *what, int width, int height) = [](const char *, int, int) {};

    /// The program has closed its last library and makes no more calls.
    void (*disconnect)() = [] {};

    /// Whether a call must fail, by its name and first argument. For tests.
    bool (*is_refused)(const std::string &call, const std::string &argument) =
        [](const std::string &, const std::string &) { return false; };
};

/// Defined by the host that is linked.
extern const Hooks hooks;

} // namespace host
