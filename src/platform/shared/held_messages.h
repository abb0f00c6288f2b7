// SPDX-License-Identifier: MIT
// The events that the program took from its port and has not replied to yet.
#pragma once

#include "platform/intuition.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace host {

/// An event with this class and code.
IntuiMessage event_message(ULONG event_class, UWORD code);

/// Owns the messages between GetMsg and ReplyMsg. Detects their misuse at once, on every host and in every
/// build.
class HeldMessages {
public:
    /// Gives an event to the program, which holds it until it replies.
    Message *deliver(const IntuiMessage &event);

    /// Takes a message back. Its memory is overwritten with all ones and kept until the next call, so that a
    /// program that reads a message after its reply never finds the old event there by chance. Ends the
    /// process if the program does not hold this message.
    void take_back(const Message *message);

    /// Takes back all messages, as closing a port does. Ends the process if there is more than one: a program
    /// may end while it handles one event, but must have replied to all others.
    void clear();

    std::size_t size() const { return messages.size(); }

private:
    std::vector<std::unique_ptr<IntuiMessage>> messages;
    /// The message that was taken back last, overwritten.
    std::unique_ptr<IntuiMessage> replied;
};

} // namespace host
