// SPDX-License-Identifier: MIT
// The events that the program has taken from its port and not replied to yet.
#pragma once

#include "platform/intuition.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace host {

/// An event of a class with a code.
IntuiMessage event_message(ULONG event_class, UWORD code);

/// Owns the messages between GetMsg and ReplyMsg. A misuse of them shows at once, on every host and in every
/// build.
class HeldMessages {
public:
    /// Gives an event to the program, which holds it until it replies.
    Message *deliver(const IntuiMessage &event);

    /// Takes a message back. Its memory stays for a while and is overwritten with all ones, so that a program
    /// that reads it after its reply finds no event there, rather than by chance the old one. Ends the
    /// process if the program does not hold this message.
    void take_back(const Message *message);

    /// Takes back all of them, as closing a port does. Ends the process if they are more than the one event
    /// that a program may end in the middle of.
    void clear();

    std::size_t size() const { return messages.size(); }

private:
    std::vector<std::unique_ptr<IntuiMessage>> messages;
    /// The message that was taken back last, overwritten.
    std::unique_ptr<IntuiMessage> replied;
};

} // namespace host
