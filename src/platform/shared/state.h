// SPDX-License-Identifier: MIT
// Everything that system calls gave to the program and that it has not given back yet.
#pragma once

#include "platform/asl.h"
#include "platform/intuition.h"
#include "platform/shared/bitmap.h"
#include "platform/shared/held_messages.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

struct Interface {};

struct Library {
    explicit Library(std::string library_name) : name(std::move(library_name)) {}
    std::string name;
    Interface main_interface;
};

struct RDArgs {
    std::string file;
};

/// Empty: events wait in the host, which is asked for each one.
struct MsgPort {};

struct ColorMap {
    host::Palette colours{};
};

namespace host {

/// A screen in memory.
struct MemoryScreen : Screen {
    MemoryScreen(int width, int height) : bitmap(width, height) { ViewPort.ColorMap = &colours; }
    BitMap bitmap;
    ColorMap colours;
    /// The bitmap that the host shows.
    BitMap *shown = &bitmap;
};

struct MemoryBuffer : ScreenBuffer {
    /// The buffer's bitmap; null if the buffer wraps the screen's.
    std::unique_ptr<BitMap> own;
};

struct MemoryWindow : Window {
    RastPort context{};
    MsgPort port;
};

/// A file requester or a screen-mode requester.
struct Requester {
    explicit Requester(ULONG requester_type) : type(requester_type) {}

    /// The address by which the program knows the requester.
    APTR address() {
        return type == ASL_FileRequest ? static_cast<APTR>(&file_request) : static_cast<APTR>(&mode_request);
    }

    /// Stores an answer in a file requester.
    void hold(std::string new_drawer, std::string new_file) {
        drawer = std::move(new_drawer);
        file = std::move(new_file);
        file_request = {file.data(), drawer.data()};
    }

    ULONG type;
    FileRequester file_request{};
    ScreenModeRequester mode_request{};
    std::string title;
    std::string file;
    std::string drawer;
};

/// The objects of one kind that the program holds.
template <typename T>
using Held = std::vector<std::unique_ptr<T>>;

struct State {
    /// The words after the program's name. Written by the host's set-up.
    std::vector<std::string> command_line;
    /// Whether every call is recorded in `calls` as a line of text. Written by the host's set-up.
    bool records_calls = false;
    std::vector<std::string> calls;

    Held<Library> libraries;
    Held<RDArgs> arguments;
    Held<MemoryScreen> screens;
    Held<MemoryBuffer> buffers;
    Held<MemoryWindow> windows;
    Held<Requester> requesters;
    HeldMessages messages;
};

/// The state of the one host that is linked.
extern State state;

/// Removes an object and destroys it; does nothing if it is not in the list.
template <typename T, typename Pointer>
void release(Held<T> &held_objects, const Pointer *object) {
    std::erase_if(held_objects, [object](const std::unique_ptr<T> &held) { return held.get() == object; });
}

} // namespace host
