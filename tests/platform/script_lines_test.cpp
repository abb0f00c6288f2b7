// SPDX-License-Identifier: MIT
// Lines of input scripts are read as what they were written for.
#include "platform/shared/script_lines.h"

#include "platform/offscreen/input_script.h"
#include "platform/shared/frame_sum.h"
#include "platform/shared/held_messages.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <sstream>

namespace {

offscreen::Setup read(const std::string &text) {
    std::istringstream script(text);
    offscreen::Setup setup;
    const auto error = offscreen::read_script(script, setup);
    EXPECT_FALSE(error) << text;
    return setup;
}

void expect_same(const IntuiMessage &event) {
    const std::string line = host::event_line(17, event);
    const offscreen::Setup setup = read(line);
    ASSERT_EQ(setup.events.size(), 1U) << line;
    EXPECT_EQ(setup.events[0].pass, 17);
    EXPECT_EQ(setup.events[0].message.Class, event.Class);
    EXPECT_EQ(setup.events[0].message.Code, event.Code);
    EXPECT_EQ(setup.events[0].message.MouseX, event.MouseX);
    EXPECT_EQ(setup.events[0].message.MouseY, event.MouseY);
}

} // namespace

TEST(ScriptLines, HoldEveryEvent) {
    for (UWORD code = 0; code < 256; ++code) {
        expect_same(host::event_message(IDCMP_VANILLAKEY, code));
        expect_same(host::event_message(IDCMP_RAWKEY, code));
    }
    expect_same(host::event_message(IDCMP_MOUSEBUTTONS, SELECTDOWN));
    expect_same(host::event_message(IDCMP_MOUSEBUTTONS, MENUDOWN));
    constexpr WORD lowest = std::numeric_limits<WORD>::min();
    constexpr WORD highest = std::numeric_limits<WORD>::max();
    for (const auto &[x, y] : std::array<std::array<WORD, 2>, 3>{{{0, 0}, {lowest, highest}, {-1, 1}}}) {
        IntuiMessage moved = host::event_message(IDCMP_MOUSEMOVE, 0);
        moved.MouseX = x;
        moved.MouseY = y;
        expect_same(moved);
    }
}

TEST(ScriptLines, HoldEveryNameWithoutWhiteSpace) {
    for (const char *name : {"a", "", "\"", "\"a", "a\"", "\"a\"", "#", "%20", "\xff"}) {
        const offscreen::Setup setup =
            read(host::file_answer_line(name, name) + host::file_line("name", name));
        ASSERT_EQ(setup.answers.size(), 1U);
        EXPECT_EQ(setup.answers[0].file->drawer, name);
        EXPECT_EQ(setup.answers[0].file->name, name);
        EXPECT_EQ(setup.stand_ins.at("name"), name);
    }
}

TEST(ScriptLines, HoldWhatAModeRequesterHeld) {
    const offscreen::Setup setup = read(host::mode_answer_line({4, static_cast<ULONG>(-7), 16384}));
    ASSERT_EQ(setup.answers.size(), 1U);
    EXPECT_EQ(setup.answers[0].mode->mode_id, 4U);
    EXPECT_EQ(setup.answers[0].mode->width, static_cast<ULONG>(-7));
    EXPECT_EQ(setup.answers[0].mode->height, 16384U);
}

TEST(ScriptLines, HoldEveryByteOfASettingsFile) {
    using namespace std::string_literals;
    for (const std::string &text :
         {""s, "\n"s, "a"s, "a\n"s, "a\n\n b \r\n"s, "\n\n\n"s, "env x\n#\n\"\0\n"s}) {
        EXPECT_EQ(read(host::settings_lines("ENV", text)).settings.at("ENV"), text);
        EXPECT_EQ(read(host::settings_lines("ENVARC", text)).settings.at("ENVARC"), text);
    }
}

TEST(FrameSum, IsTheHashOfSidesAndPixels) {
    host::FrameSum sum;
    EXPECT_EQ(sum.value(), 0xCBF29CE484222325U);
    const std::array<std::uint8_t, 2> pixels{0, 255};
    sum.add(pixels, 2, 1);
    std::uint64_t expected = 0xCBF29CE484222325U;
    for (const std::uint8_t byte : {2, 0, 0, 0, 1, 0, 0, 0, 0, 255}) {
        expected = (expected ^ byte) * 0x100000001B3U;
    }
    EXPECT_EQ(sum.value(), expected);
}
