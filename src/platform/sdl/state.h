// SPDX-License-Identifier: MIT
// What the desktop host's six libraries share.
#pragma once

#include "platform/asl.h"
#include "platform/intuition.h"
#include "platform/sdl/display_modes.h"
#include "platform/sdl/host.h"
#include "platform/sdl/requesters.h"
#include "platform/shared/bitmap.h"
#include "platform/shared/held_messages.h"

#include <csignal>
#include <deque>
#include <memory>
#include <string>
#include <vector>

struct ColorMap {
    host::Palette colours{};
};

namespace desktop {

struct DesktopScreen : Screen {
    DesktopScreen(int width, int height) : bitmap(width, height) { ViewPort.ColorMap = &colours; }
    BitMap bitmap;
    ColorMap colours;
    /// The bitmap that the screen shows.
    BitMap *shown = &bitmap;
};

/// Mode and size of a screen.
struct ScreenChoice {
    std::uint32_t mode_id;
    std::uint32_t width;
    std::uint32_t height;
};

/// The host's whole state, apart from the window's.
struct State {
    Setup setup;
    /// The screen that is open; null if there is none.
    std::unique_ptr<DesktopScreen> screen;
    /// A frame was written, and not presented yet.
    bool picture_due = false;
    /// The user's wish to quit was handed on.
    bool escape_sent = false;
    /// What the screen-mode requester holds when it appears: the screen opened last.
    ScreenChoice current{first_mode_id, 320, 256};
    /// The settings file that was opened for loading last; empty if none was. Written by open_file.
    std::string settings_path;
    /// Events that wait to be taken, and those that the program holds.
    std::deque<IntuiMessage> waiting;
    host::HeldMessages held;
};
extern State state;

/// Set by request_quit, outside the state since a signal may come at any time.
extern volatile std::sig_atomic_t quit_requested;

/// What a requester that is open must do now. The window stays alive below it, and a wish to quit goes
/// through it; who goes to the viewer is shown what it waits for.
Order order_to_requester();

/// Presents the picture if one is due, waits for the refresh, and takes the user's input in.
void finish_pass();

} // namespace desktop
