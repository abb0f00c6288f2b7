// SPDX-License-Identifier: MIT
// Tests of events between GetMsg and ReplyMsg, and of their misuse.
#include "platform/shared/held_messages.h"

#include <gtest/gtest.h>

namespace {

IntuiMessage key_event(UWORD code) {
    IntuiMessage event{};
    event.Class = IDCMP_VANILLAKEY;
    event.Code = code;
    return event;
}

const IntuiMessage &as_event(const Message *message) {
    return *reinterpret_cast<const IntuiMessage *>(message);
}

TEST(HeldMessages, BelongToTheProgramUntilItReplies) {
    host::HeldMessages held;
    const Message *first = held.deliver(key_event('a'));
    const Message *second = held.deliver(key_event('b'));
    EXPECT_EQ(held.size(), 2U);
    held.take_back(first);
    EXPECT_EQ(held.size(), 1U);
    EXPECT_EQ(as_event(second).Class, ULONG{IDCMP_VANILLAKEY});
    EXPECT_EQ(as_event(second).Code, 'b');
    held.take_back(second);
    EXPECT_EQ(held.size(), 0U);
}

TEST(HeldMessages, AreNoEventAfterTheReply) {
    host::HeldMessages held;
    const Message *message = held.deliver(key_event('q'));
    held.take_back(message);
    EXPECT_EQ(as_event(message).Class, 0xFFFFFFFF);
    EXPECT_EQ(as_event(message).Code, 0xFFFF);
}

TEST(HeldMessages, OneMayBeHeldWhenThePortCloses) {
    host::HeldMessages held;
    held.clear();
    held.deliver(key_event('t'));
    held.clear();
    EXPECT_EQ(held.size(), 0U);
}

TEST(HeldMessagesDeath, ReplyToAMessageThatIsNotHeld) {
    host::HeldMessages held;
    const Message *message = held.deliver(key_event('a'));
    held.take_back(message);
    EXPECT_DEATH(held.take_back(message), "a reply to a message that the program does not hold");
    EXPECT_DEATH(held.take_back(nullptr), "a reply to a message that the program does not hold");
}

TEST(HeldMessagesDeath, EventsThatAreNeverRepliedTo) {
    host::HeldMessages held;
    held.deliver(key_event('a'));
    held.deliver(key_event('b'));
    EXPECT_DEATH(held.clear(), "events that the program never replied to");
}

} // namespace
