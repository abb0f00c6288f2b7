// SPDX-License-Identifier: MIT
// What the offscreen host's six libraries share.
#pragma once

#include "platform/asl.h"
#include "platform/offscreen/host.h"
#include "platform/shared/held_messages.h"

#include <csignal>
#include <initializer_list>
#include <memory>

struct Interface {};

struct Library {
    explicit Library(std::string library_name) : name(std::move(library_name)) {}
    std::string name;
    Interface main_interface;
};

struct RDArgs {
    std::string file;
};

/// The events wait in the host's state.
struct MsgPort {};

struct ColorMap {
    host::Palette colours{};
};

namespace offscreen {

struct OffscreenScreen : Screen {
    OffscreenScreen(int width, int height) : bitmap(width, height) { ViewPort.ColorMap = &colours; }
    BitMap bitmap;
    ColorMap colours;
    /// The bitmap that the screen shows.
    BitMap *shown = &bitmap;
};

struct OffscreenBuffer : ScreenBuffer {
    /// A bitmap of the buffer's own; none if it wraps the screen's.
    std::unique_ptr<BitMap> own;
};

struct OffscreenWindow : Window {
    RastPort context{};
    MsgPort port;
};

struct OffscreenFileRequester : FileRequester {
    std::string file;
    std::string drawer;
};

/// What the program holds, by kind; each call removes what it closes, and what is not here is ignored.
template <typename T>
using Held = std::vector<std::unique_ptr<T>>;

/// The host's whole state; started anew by set_up.
struct State {
    Setup setup;
    int pass = 0;
    /// A frame was written in this pass, and its picture not yet handed on.
    bool picture_due = false;
    /// The host's own Esc was handed to the program, which ends with this pass.
    bool is_escape_sent = false;
    int refusable_points = 0;
    std::map<std::string, int> call_counts;
    std::vector<std::string> calls;

    Held<Library> libraries;
    Held<RDArgs> arguments;
    Held<OffscreenScreen> screens;
    Held<OffscreenBuffer> buffers;
    Held<OffscreenWindow> windows;
    Held<OffscreenFileRequester> file_requesters;
    Held<ScreenModeRequester> mode_requesters;
    host::HeldMessages messages;
};
extern State state;

/// Set by request_quit, outside the state since a signal may come at any time.
extern volatile std::sig_atomic_t quit_requested;

/// Notes a call with its arguments as text, if calls are recorded.
void record(const char *call, std::initializer_list<std::string> arguments);

/// Counts a call that could be refused and tells whether this one is, by its name, its number, its first
/// argument or its place among all of them.
bool is_refused(const std::string &call, const std::string &argument = "");

/// The tags of a list as text, in order.
std::string tags_as_text(const TagItem *tags);

/// Takes an object out of what is held and destroys it.
template <typename T, typename Pointer>
void release(Held<T> &held_objects, const Pointer *object) {
    std::erase_if(held_objects, [object](const std::unique_ptr<T> &held) { return held.get() == object; });
}

/// Hands the visible picture on, if the current pass has not done so yet.
void hand_on_picture();

} // namespace offscreen
