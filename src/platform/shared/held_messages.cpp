// SPDX-License-Identifier: MIT
// Finds messages by their addresses.
#include "platform/shared/held_messages.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace host {

namespace {

[[noreturn]] void end_on_misuse(const char *what) {
    std::fprintf(stderr, "zelvo: %s\n", what);
    std::abort();
}

} // namespace

IntuiMessage event_message(ULONG event_class, UWORD code) {
    IntuiMessage message{};
    message.Class = event_class;
    message.Code = code;
    return message;
}

Message *HeldMessages::deliver(const IntuiMessage &event) {
    messages.push_back(std::make_unique<IntuiMessage>(event));
    return &messages.back()->ExecMessage;
}

void HeldMessages::take_back(const Message *message) {
    const auto found = std::find_if(messages.begin(), messages.end(),
                                    [message](const auto &held) { return &held->ExecMessage == message; });
    if (found == messages.end()) {
        end_on_misuse("a reply to a message that the program does not hold");
    }
    replied = std::move(*found);
    messages.erase(found);
    std::memset(static_cast<void *>(replied.get()), 0xFF, sizeof *replied);
}

void HeldMessages::clear() {
    if (messages.size() > 1) {
        end_on_misuse("events that the program never replied to");
    }
    messages.clear();
}

} // namespace host
