// SPDX-License-Identifier: MIT
// What differs from host to host in the system calls that all hosts share.
#pragma once

#include "platform/intuition.h"
#include "platform/shared/state.h"

#include <optional>
#include <string>

namespace host {

/// A screen as the program asks for it.
struct ScreenRequest {
    std::int32_t mode_id;
    std::int32_t width;
    std::int32_t height;
    std::string title;
};

/// Whether a screen can have such a size, in any mode.
bool has_possible_size(const ScreenRequest &screen);

/// The functions of a host that the shared system calls use. Those that have a default may be left out.
struct Hooks {
    /// The next event of the window, nothing if there is none. Every GetMsg calls it. When a frame was
    /// written since the last call, the texts of the pass are drawn as well, and the picture can be shown.
    std::optional<IntuiMessage> (*next_event)();

    /// Lets the user answer a file requester, and makes the requester hold the answer; false if it was
    /// cancelled.
    bool (*ask_for_file)(Requester &requester);

    /// The same for a screen-mode requester.
    bool (*ask_for_mode)(ScreenModeRequester &requester);

    /// What a screen-mode requester holds when it appears.
    ScreenModeRequester (*initial_mode)();

    /// Whether requesters can be shown.
    bool (*can_show_requesters)() = [] { return true; };

    /// Whether there can be such a screen. Called before there is a bitmap for it.
    bool (*is_possible)(const ScreenRequest &screen) = has_possible_size;

    /// Shows a new screen, which is black; false if that fails.
    bool (*show_screen)(const ScreenRequest &screen) = [](const ScreenRequest &) { return true; };

    /// The screen is being closed.
    void (*hide_screen)() = [] {};

    /// Drops the events that still wait, since the window is being closed.
    void (*drop_events)() = [] {};

    /// The program has written a frame: rows of pixels without padding, which are the program's.
    void (*frame_written)(const UBYTE *pixels, int width, int height);

    /// Says that memory has no room for a screen or for a buffer of a screen of this size.
    void (*report_no_memory)(const char *what, int width, int height) = [](const char *, int, int) {};

    /// The program has closed its last library and makes no more calls.
    void (*disconnect)() = [] {};

    /// Whether a call is to fail, by its name and its first argument, as a test may want.
    bool (*is_refused)(const std::string &call, const std::string &argument) =
        [](const std::string &, const std::string &) { return false; };
};

/// Every host defines its own.
extern const Hooks hooks;

} // namespace host
