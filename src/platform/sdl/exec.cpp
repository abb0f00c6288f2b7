// SPDX-License-Identifier: MIT
// exec.library on a desktop: libraries that are part of this host, and a port fed by the user.
#include "platform/exec.h"

#include "platform/sdl/picture_window.h"
#include "platform/sdl/state.h"

using namespace desktop;

struct Library {
    int users;
};

struct Interface {};

namespace {

/// All libraries are this one; the display is let go with its last user. Written by OpenLibrary and
/// CloseLibrary.
Library host_library{0};

Interface host_interface;

} // namespace

Library *OpenLibrary(CONST_STRPTR, ULONG) {
    ++host_library.users;
    return &host_library;
}

void CloseLibrary(Library *library) {
    if (library != nullptr && --library->users == 0) {
        disconnect_display();
    }
}

Interface *GetInterface(Library *, CONST_STRPTR, ULONG, const TagItem *) {
    return &host_interface;
}

void DropInterface(Interface *) {}

Message *GetMsg(MsgPort *) {
    finish_pass();
    if (state.waiting.empty()) {
        return nullptr;
    }
    Message *const message = state.held.deliver(state.waiting.front());
    state.waiting.pop_front();
    return message;
}

void ReplyMsg(Message *message) {
    state.held.take_back(message);
}
