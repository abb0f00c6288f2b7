// SPDX-License-Identifier: MIT
// exec.library offscreen: libraries that are always there, and a port fed from the script.
#include "platform/exec.h"

#include "platform/offscreen/state.h"

using namespace offscreen;

namespace {

constexpr UWORD escape = 27;

} // namespace

Library *OpenLibrary(CONST_STRPTR name, ULONG version) {
    record("OpenLibrary", {name, std::to_string(version)});
    if (is_refused("OpenLibrary", name)) {
        return nullptr;
    }
    state.libraries.push_back(std::make_unique<Library>(name));
    return state.libraries.back().get();
}

void CloseLibrary(Library *library) {
    record("CloseLibrary", {library != nullptr ? library->name : "null"});
    release(state.libraries, library);
}

Interface *GetInterface(Library *library, CONST_STRPTR name, ULONG version, const TagItem *) {
    record("GetInterface", {library->name, name, std::to_string(version)});
    return is_refused("GetInterface", library->name) ? nullptr : &library->main_interface;
}

void DropInterface(Interface *) {
    record("DropInterface", {});
}

Message *GetMsg(MsgPort *) {
    record("GetMsg", {});
    hand_on_picture();
    std::deque<Event> &events = state.setup.events;
    if (!events.empty() && events.front().pass <= state.pass) {
        const IntuiMessage message = events.front().message;
        events.pop_front();
        return state.messages.deliver(message);
    }
    const int last_pass = state.setup.last_pass;
    const bool is_last_pass = (last_pass > 0 && state.pass == last_pass) || quit_requested != 0;
    if (is_last_pass && !state.is_escape_sent) {
        state.is_escape_sent = true;
        IntuiMessage message{};
        message.Class = IDCMP_VANILLAKEY;
        message.Code = escape;
        return state.messages.deliver(message);
    }
    return nullptr;
}

void ReplyMsg(Message *message) {
    state.messages.take_back(message);
}
