// SPDX-License-Identifier: MIT
// exec.library: libraries, and a port whose messages come from the host.
#include "platform/exec.h"

#include "platform/shared/call_record.h"

using namespace host;

namespace host {

State state;

} // namespace host

Library *OpenLibrary(CONST_STRPTR name, ULONG version) {
    note_call("OpenLibrary", name, version);
    if (is_refused("OpenLibrary", name)) {
        return nullptr;
    }
    state.libraries.push_back(std::make_unique<Library>(name));
    return state.libraries.back().get();
}

void CloseLibrary(Library *library) {
    note_call("CloseLibrary", library != nullptr ? library->name : "null");
    release(state.libraries, library);
    if (library != nullptr && state.libraries.empty()) {
        hooks.disconnect();
    }
}

Interface *GetInterface(Library *library, CONST_STRPTR name, ULONG version, const TagItem *) {
    note_call("GetInterface", library->name, name, version);
    return is_refused("GetInterface", library->name) ? nullptr : &library->main_interface;
}

void DropInterface(Interface *) {
    note_call("DropInterface");
}

Message *GetMsg(MsgPort *) {
    note_call("GetMsg");
    const std::optional<IntuiMessage> event = hooks.next_event();
    return event ? state.messages.deliver(*event) : nullptr;
}

void ReplyMsg(Message *message) {
    state.messages.take_back(message);
}
