// SPDX-License-Identifier: MIT
// Tests of reading input scripts.
#include "platform/offscreen/input_script.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using Script = offscreen::Setup;

/// Reads a script that must be well-formed.
Script read(const std::string &text) {
    std::istringstream script(text);
    Script setup;
    const auto error = offscreen::read_script(script, setup);
    EXPECT_FALSE(error.has_value()) << error->line << ": " << error->message;
    return setup;
}

/// The number of the line that is refused; 0 for none.
int error_line(const std::string &text) {
    std::istringstream script(text);
    Script setup;
    const auto error = offscreen::read_script(script, setup);
    if (!error) {
        return 0;
    }
    EXPECT_NE(error->message, "");
    return error->line;
}

void expect_event(const offscreen::Event &event, int pass, ULONG event_class, int code) {
    EXPECT_EQ(event.pass, pass);
    EXPECT_EQ(event.message.Class, event_class);
    EXPECT_EQ(event.message.Code, code);
}

} // namespace

TEST(InputScript, EmptyScriptHasNoEventsAndNoAnswers) {
    const Script setup = read("");
    EXPECT_TRUE(setup.events.empty());
    EXPECT_TRUE(setup.answers.empty());
}

TEST(InputScript, EmptyLinesAndCommentsAreSkipped) {
    const Script setup = read("# comment\n\n   \n\t# 1 key a\n1 key b\r\n#\n");
    ASSERT_EQ(setup.events.size(), 1U);
    expect_event(setup.events[0], 1, IDCMP_VANILLAKEY, 'b');
}

TEST(InputScript, EventsOfAPassKeepTheirOrder) {
    std::string lines;
    for (int i = 0; i < 200; ++i) {
        lines += std::to_string(1 + i % 2) + " move " + std::to_string(i) + " 0\n";
    }
    const Script setup = read(lines);
    ASSERT_EQ(setup.events.size(), 200U);
    for (int i = 0; i < 200; ++i) {
        const offscreen::Event &event = setup.events[static_cast<std::size_t>(i)];
        EXPECT_EQ(event.pass, 1 + i / 100);
        EXPECT_EQ(event.message.MouseX, i % 100 * 2 + i / 100);
    }
}

TEST(InputScript, KeysAreCharactersOrCodes) {
    const Script setup = read("1 key a\n2 key R\n3 key 0\n4 key 0x1b\n5 key 0xFF\n6 key #\n7 key \"\n");
    ASSERT_EQ(setup.events.size(), 7U);
    expect_event(setup.events[0], 1, IDCMP_VANILLAKEY, 'a');
    expect_event(setup.events[1], 2, IDCMP_VANILLAKEY, 'R');
    expect_event(setup.events[2], 3, IDCMP_VANILLAKEY, '0');
    expect_event(setup.events[3], 4, IDCMP_VANILLAKEY, 27);
    expect_event(setup.events[4], 5, IDCMP_VANILLAKEY, 255);
    expect_event(setup.events[5], 6, IDCMP_VANILLAKEY, '#');
    expect_event(setup.events[6], 7, IDCMP_VANILLAKEY, '"');
}

TEST(InputScript, RawKeysAreCodes) {
    const Script setup = read("1 rawkey 0x4C\n12 rawkey 0x4f\n");
    ASSERT_EQ(setup.events.size(), 2U);
    expect_event(setup.events[0], 1, IDCMP_RAWKEY, 0x4C);
    expect_event(setup.events[1], 12, IDCMP_RAWKEY, 0x4F);
}

TEST(InputScript, MovementsAreSigned) {
    const Script setup = read("3 move 10 -20\n3 move -32768 32767\n");
    ASSERT_EQ(setup.events.size(), 2U);
    expect_event(setup.events[0], 3, IDCMP_MOUSEMOVE, 0);
    EXPECT_EQ(setup.events[0].message.MouseX, 10);
    EXPECT_EQ(setup.events[0].message.MouseY, -20);
    EXPECT_EQ(setup.events[1].message.MouseX, -32768);
    EXPECT_EQ(setup.events[1].message.MouseY, 32767);
}

TEST(InputScript, ButtonsArePressed) {
    const Script setup = read("1 button left\n1 button right\n");
    ASSERT_EQ(setup.events.size(), 2U);
    expect_event(setup.events[0], 1, IDCMP_MOUSEBUTTONS, 0x68);
    expect_event(setup.events[1], 1, IDCMP_MOUSEBUTTONS, 0x69);
}

TEST(InputScript, EventsAreSortedByPassAndKeepTheScriptsOrderWithinAPass) {
    const Script setup = read("5 key a\n2 key b\n5 key c\n2 key d\n1 key e\n");
    std::string order;
    for (const offscreen::Event &event : setup.events) {
        order += static_cast<char>(event.message.Code);
    }
    EXPECT_EQ(order, "ebdac");
}

TEST(InputScript, WordsMayBeSeparatedByAnyBlanks) {
    const Script setup = read("  4\t move   1\t\t2  \n");
    ASSERT_EQ(setup.events.size(), 1U);
    EXPECT_EQ(setup.events[0].pass, 4);
    EXPECT_EQ(setup.events[0].message.MouseY, 2);
}

TEST(InputScript, LastLineNeedsNoLineFeed) {
    EXPECT_EQ(read("1 key a").events.size(), 1U);
}

TEST(InputScript, AnswersKeepTheirOrder) {
    const Script setup = read("answer file Work:textures gold\nanswer cancel\nanswer mode 0x29000 640 480\n");
    ASSERT_EQ(setup.answers.size(), 3U);
    ASSERT_TRUE(setup.answers[0].file);
    EXPECT_EQ(setup.answers[0].file->drawer, "Work:textures");
    EXPECT_EQ(setup.answers[0].file->name, "gold");
    EXPECT_FALSE(setup.answers[0].mode);
    EXPECT_FALSE(setup.answers[1].file || setup.answers[1].mode);
    ASSERT_TRUE(setup.answers[2].mode);
    EXPECT_EQ(setup.answers[2].mode->mode_id, 0x29000U);
    EXPECT_EQ(setup.answers[2].mode->width, 640U);
    EXPECT_EQ(setup.answers[2].mode->height, 480U);
    EXPECT_FALSE(setup.answers[2].file);
}

TEST(InputScript, QuotedNamesMayContainBlanksOrBeEmpty) {
    const Script setup = read("answer file \"\" \"two words\"\nanswer file \"Ram Disk:\" \"\"\n"
                              "answer file \"\" \" name\"\n");
    ASSERT_EQ(setup.answers.size(), 3U);
    EXPECT_EQ(setup.answers[0].file->drawer, "");
    EXPECT_EQ(setup.answers[0].file->name, "two words");
    EXPECT_EQ(setup.answers[1].file->drawer, "Ram Disk:");
    EXPECT_EQ(setup.answers[1].file->name, "");
    EXPECT_EQ(setup.answers[2].file->name, " name");
}

TEST(InputScript, LoneDoubleQuoteIsAKey) {
    const Script setup = read("1 key \"\n2 key \" \n");
    ASSERT_EQ(setup.events.size(), 2U);
    EXPECT_EQ(setup.events[0].message.Code, '"');
    EXPECT_EQ(setup.events[1].message.Code, '"');
}

TEST(InputScript, ModesMayHaveImpossibleSizes) {
    const Script setup = read("answer mode -1 0 -5\nanswer mode 4294967295 20000 20000\n");
    ASSERT_EQ(setup.answers.size(), 2U);
    EXPECT_EQ(setup.answers[0].mode->mode_id, 0xFFFFFFFFU);
    EXPECT_EQ(setup.answers[0].mode->width, 0U);
    EXPECT_EQ(static_cast<LONG>(setup.answers[0].mode->height), -5);
    EXPECT_EQ(setup.answers[1].mode->mode_id, 0xFFFFFFFFU);
}

TEST(InputScript, ErrorHasTheNumberOfItsLine) {
    EXPECT_EQ(error_line("1 key a\n\n# fine\n2 key\n3 key b\n"), 4);
    EXPECT_EQ(error_line("nonsense"), 1);
    EXPECT_EQ(error_line("1 key a\n1 nonsense b"), 2);
}

TEST(InputScript, EveryKindOfMalformedEventIsRefused) {
    for (const char *line : {"1",
                             "key a",
                             "0 key a",
                             "-1 key a",
                             "1.5 key a",
                             "2147483648 key a",
                             "x key a",
                             "99999999999 key a",
                             "1key a",
                             "1x key a",
                             "1 key",
                             "1 key ab",
                             "1 key a b",
                             "1 key 0x1",
                             "1 key 0x100",
                             "1 key 0x123",
                             "1 key 0xG0",
                             "1 key 0x-1",
                             "1 rawkey",
                             "1 rawkey 76",
                             "1 rawkey 4C",
                             "1 rawkey 0x4C 1",
                             "1 rawkey 0x04C",
                             "1 move",
                             "1 move 1",
                             "1 move 1 2 3",
                             "1 move a 1",
                             "1 move 1 b",
                             "1 move 32768 0",
                             "1 move 0 -32769",
                             "1 move 1.5 0",
                             "1 move 0x-5 0",
                             "1 move 0 0x",
                             "1 move +1 0",
                             "1 button",
                             "1 button middle",
                             "1 button left right",
                             "1 jump",
                             "1 Key a",
                             "1 KEY a"}) {
        EXPECT_EQ(error_line(line), 1) << line;
    }
}

TEST(InputScript, EveryKindOfMalformedAnswerIsRefused) {
    for (const char *line :
         {"answer", "answer yes", "answer file", "answer file one", "answer file one two three",
          "answer mode 0 320", "answer mode 0 320 256 8", "answer mode x 320 256", "answer mode 0 3x 256",
          "answer mode 0x-1 320 256", "answer mode 4294967296 320 256", "answer mode 0 2147483648 1",
          "answer mode 0 wide 256", "answer mode 0 320 2147483648", "answer cancel now",
          "answer file \"open name", "answer file a \"open b"}) {
        EXPECT_EQ(error_line(line), 1) << line;
    }
}

TEST(InputScript, RefusedScriptLeavesTheSetUpAsItWas) {
    std::istringstream script("1 key a\nanswer cancel\n2 nonsense\n");
    Script setup;
    setup.events.resize(3);
    setup.answers.resize(2);
    EXPECT_TRUE(offscreen::read_script(script, setup).has_value());
    EXPECT_EQ(setup.events.size(), 3U);
    EXPECT_EQ(setup.answers.size(), 2U);
}

TEST(InputScript, ChangesOnlyEventsAndAnswers) {
    std::istringstream script("1 key a\n");
    Script setup;
    setup.last_pass = 9;
    setup.command_line = {"object"};
    EXPECT_FALSE(offscreen::read_script(script, setup).has_value());
    EXPECT_EQ(setup.last_pass, 9);
    EXPECT_EQ(setup.command_line, std::vector<std::string>{"object"});
}

TEST(InputScript, SaysWhatARunBeginsWith) {
    const Script setup = read("object \"my knot.lwo\"\nfile a.chunky /b/c\nfile d \"\"\npasses 12   \n"
                              "frames 11 0x00000000000000ff\n");
    EXPECT_EQ(setup.command_line, std::vector<std::string>{"my knot.lwo"});
    EXPECT_EQ(setup.stand_ins, (std::map<std::string, std::string>{{"a.chunky", "/b/c"}, {"d", ""}}));
    EXPECT_EQ(setup.last_pass, 12);
    ASSERT_TRUE(setup.recorded_frames);
    EXPECT_EQ(setup.recorded_frames->passes, 11);
    EXPECT_EQ(setup.recorded_frames->sum, 255U);
}

TEST(InputScript, TakesLinesOfSettingsAsTheyAre) {
    const Script setup = read("env a: 1  \nenvarc\nenv  \"b\nenv\n");
    EXPECT_EQ(setup.settings,
              (std::map<std::string, std::string>{{"ENV", "a: 1  \n \"b\n"}, {"ENVARC", ""}}));
    EXPECT_TRUE(read("").settings.empty());
}

TEST(InputScript, EveryKindOfMalformedLineAboutARunIsRefused) {
    for (const char *line : {"object",
                             "object a b",
                             "file",
                             "file a",
                             "file a b c",
                             "passes",
                             "passes 0",
                             "passes x",
                             "passes 1 2",
                             "passes -1",
                             "passes 2147483648",
                             "frames",
                             "frames 1",
                             "frames 1 2",
                             "frames 1 0x12",
                             "frames 1 0x00000000000000fg",
                             "frames -1 0x0000000000000000",
                             "frames 1 0x0000000000000000 2",
                             "environment a",
                             "Env a"}) {
        EXPECT_EQ(error_line(line), 1) << line;
    }
}
