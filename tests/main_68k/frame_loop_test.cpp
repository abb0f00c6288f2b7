// SPDX-License-Identifier: MIT
// Tests of the order of a pass, of what lasts from pass to pass, and of how the loop ends.
#include "display/frame_buffers.h"
#include "display/screen.h"
#include "main_68k/frame_loop.h"
#include "main_68k/run_statistics.h"
#include "main_68k/start_up.h"
#include "support/viewer_test.h"

namespace {

using Lines = std::vector<std::string>;

class FrameLoop : public ViewerTest {};

/// The calls of the frame loop: from the first reading of the clock up to the end of the program.
Lines loop_calls(const ProgramRun &run) {
    return {run.calls.begin() + call_place(run, "ElapsedTime"),
            run.calls.begin() + call_place(run, "FreeArgs")};
}

/// Those of the frame loop's calls that draw.
Lines drawing_calls(const ProgramRun &run) {
    Lines calls = loop_calls(run);
    std::erase_if(calls, [](const std::string &call) {
        return !call.starts_with("WriteChunkyPixels") && !call.starts_with("Move") &&
               !call.starts_with("Text");
    });
    return calls;
}

/// The messages on the message line, in order, and how many passes drew each.
std::vector<std::pair<std::string, int>> messages_drawn(const ProgramRun &run) {
    std::vector<std::pair<std::string, int>> messages;
    for (const std::string &text : texts_drawn(run)) {
        if (text.starts_with("fps:")) {
            continue;
        }
        if (messages.empty() || messages.back().first != text) {
            messages.emplace_back(text, 0);
        }
        ++messages.back().second;
    }
    return messages;
}

TEST_F(FrameLoop, GivesControlBackAfterEachPass) {
    RunOptions in_steps;
    in_steps.before = [] {
        begin_run(2);
        while (!run_pass()) {
            note("goes on");
        }
        note("quits");
        end_run();
    };
    const ProgramRun run = run_program(later_start(3), in_steps);
    expect_normal_end(run);
    EXPECT_EQ(run.notes, (Lines{"goes on", "goes on", "quits"}));
    const ProgramRun whole = run_program(later_start(3));
    EXPECT_EQ(run.calls, whole.calls);
    EXPECT_EQ(run.output, whole.output);
}

TEST_F(FrameLoop, MeasuresDrawsAndListensInAFixedOrder) {
    const ProgramRun run = run_program(later_start(3));
    expect_normal_end(run);
    // The first rates: the two stages measured so far take 1/128 s, then each pass takes 1/64 s. Each average
    // is over five entries, of which the missing ones are 0.
    Lines expected{"ElapsedTime()"};
    for (const std::string rate : {"25.60 ", "38.40 ", "51.20 "}) {
        const Lines pass{
            "ElapsedTime()",
            "ElapsedTime()",
            "WriteChunkyPixels(0, 0, 319, 255, 320)",
            "ElapsedTime()",
            "Move(1, 10)",
            "Text(\"Zelvo\")",
            "Move(1, 246)",
            "Text(\"fps:" + rate + "\")",
            "ElapsedTime()",
            "GetMsg()",
        };
        expected.insert(expected.end(), pass.begin(), pass.end());
        if (rate == "51.20 ") {
            // The last pass gets Esc.
            expected.emplace_back("GetMsg()");
        }
        expected.emplace_back("ElapsedTime()");
    }
    EXPECT_EQ(loop_calls(run), expected);
}

TEST_F(FrameLoop, DrawsNoCounterWhileItIsOff) {
    const ProgramRun run = run_program(later_start(5, {{"fps", "0"}}));
    expect_normal_end(run);
    EXPECT_EQ(texts_drawn(run), Lines(5, "Zelvo"));
    EXPECT_EQ(count_calls(run, "Move"), 5);
}

TEST_F(FrameLoop, ReplacesThePalettesMessageByTheGreeting) {
    EXPECT_EQ(texts_drawn(run_program(first_start())).at(0), "Zelvo");
}

TEST_F(FrameLoop, ShowsAMessageUntilTheFramesAddUpToTwoSeconds) {
    // The first pass subtracts nothing and every later one 1/64 s, so there is time left for 128 more passes.
    const ProgramRun run = run_program(first_start(140, "triangle"));
    EXPECT_EQ(messages_drawn(run), (std::vector<std::pair<std::string, int>>{{"Zelvo", 129}}));
}

TEST_F(FrameLoop, LetsTheMessageTimerEndBelowZero) {
    // At 1.25 s per pass: 2, then 0.75, then -0.5. From then on the message is not drawn and the timer stays.
    offscreen::Setup setup = first_start(6);
    setup.tick = 20480;
    RunOptions options;
    options.at_end = [] { note(std::to_string(viewer.message_timer)); };
    const ProgramRun run = run_program(std::move(setup), options);
    EXPECT_EQ(messages_drawn(run), (std::vector<std::pair<std::string, int>>{{"Zelvo", 3}}));
    EXPECT_EQ(run.notes, Lines{"-0.500000"});
}

TEST_F(FrameLoop, RestartsTheTimerWithEveryMessage) {
    offscreen::Setup setup = first_start(12);
    setup.tick = 16384;
    // At one second per pass the greeting would be gone after pass 3 without the keys.
    setup.events = {key(3, 'p'), key(4, 'd'), key(9, 'l')};
    const ProgramRun run = run_program(std::move(setup));
    EXPECT_EQ(
        messages_drawn(run),
        (std::vector<std::pair<std::string, int>>{
            {"Zelvo", 3}, {"dots enabled", 1}, {"doubleside on", 2}, {"lightsource rotating mode on", 2}}));
}

TEST_F(FrameLoop, ShowsEachStepOfTheBlurModes) {
    offscreen::Setup setup = first_start(5);
    setup.events = {key(1, 'b'), key(2, 'b'), key(3, 'b'), key(4, 'b')};
    EXPECT_EQ(
        messages_drawn(run_program(std::move(setup))),
        (std::vector<std::pair<std::string, int>>{
            {"Zelvo", 1}, {"blurmode: 1", 1}, {"blurmode: 2", 1}, {"blurmode: 3", 1}, {"blurmode: 0", 1}}));
}

TEST_F(FrameLoop, HandlesAllEventsOfAPassBeforeTheNext) {
    offscreen::Setup setup = first_start(4);
    setup.events = {key(2, 'b'), key(2, 'b'), key(2, 'p'), mouse_move(2, 3, 4), key(2, 'e'), key(3, 'd')};
    setup.on_picture = [](const offscreen::Picture &picture) {
        note(std::to_string(picture.pass) + ": " + std::to_string(viewer.clear_style) + " " +
             std::to_string(viewer.dots) + " " + std::to_string(viewer.tilt_x) + " " +
             std::to_string(viewer.tilt_y) + " " + std::to_string(viewer.obj_style) + " " +
             std::to_string(viewer.doubleside) + " " + viewer.message_line.data());
    };
    EXPECT_EQ(run_program(std::move(setup)).notes,
              (Lines{"1: 0 0 0 0 1 0 Zelvo", "2: 0 0 0 0 1 0 Zelvo", "3: 2 1 3 4 0 0 hmm... little effect :)",
                     "4: 2 1 3 4 0 1 doubleside on"}));
}

TEST_F(FrameLoop, SpinsAfterTheEventsOfEachPass) {
    offscreen::Setup setup = first_start(4);
    setup.events = {key(3, 'r')};
    setup.on_picture = [](const offscreen::Picture &) { note(std::to_string(viewer.spin_angle)); };
    RunOptions options;
    options.before = [] { viewer.rotate = 2.5; };
    options.at_end = [] { note(std::to_string(viewer.spin_angle)); };
    EXPECT_EQ(run_program(std::move(setup), options).notes,
              (Lines{"0.000000", "2.500000", "5.000000", "5.000000", "5.000000"}));
}

TEST_F(FrameLoop, CountsFramesFromTheStartAndFromTheStopKey) {
    offscreen::Setup setup = first_start(6);
    setup.events = {key(4, 'r')};
    setup.on_picture = [](const offscreen::Picture &) {
        note(std::to_string(viewer.frames_drawn) + " of " + std::to_string(static_cast<int>(frame_count)));
    };
    RunOptions options;
    options.before = [] { viewer.frames_drawn = 99; };
    EXPECT_EQ(run_program(std::move(setup), options).notes,
              (Lines{"0 of 1", "1 of 2", "2 of 3", "3 of 4", "1 of 5", "2 of 6"}));
}

TEST_F(FrameLoop, EndsTheSameWayByEveryQuitCommand) {
    const ProgramRun by_escape = run_program(first_start(3));
    expect_normal_end(by_escape);
    const std::vector<offscreen::Event> quits{key(3, '\x1B'), key(3, 'q'), key(3, 'x'), left_button(3)};
    for (const offscreen::Event &quit : quits) {
        offscreen::Setup setup = first_start(0);
        setup.events = {quit};
        const ProgramRun run = run_program(std::move(setup));
        expect_normal_end(run);
        EXPECT_EQ(run.output, by_escape.output) << quit.message.Code;
        EXPECT_EQ(run.calls, by_escape.calls) << quit.message.Code;
    }
}

TEST_F(FrameLoop, FinishesThePassInWhichTheUserQuits) {
    offscreen::Setup setup = first_start(0);
    setup.events = {key(2, 'q'), key(2, 'p'), key(3, 'd')};
    RunOptions options;
    options.before = [] { viewer.rotate = 1.5; };
    options.at_end = [] {
        note("dots " + std::to_string(viewer.dots));
        note("doubleside " + std::to_string(viewer.doubleside));
        note("spin " + std::to_string(viewer.spin_angle));
        note("drawn " + std::to_string(viewer.frames_drawn));
    };
    const ProgramRun run = run_program(std::move(setup), options);
    expect_normal_end(run);
    EXPECT_EQ(run.notes, (Lines{"dots 1", "doubleside 0", "spin 3.000000", "drawn 2"}));
    EXPECT_EQ(count_calls(run, "WriteChunkyPixels"), 2);
}

TEST_F(FrameLoop, ChangesTheModeBeforeItQuits) {
    offscreen::Setup setup = first_start(0);
    setup.events = {key(1, 'q'), key(1, 'm')};
    setup.answers = {{{}, offscreen::ModeAnswer{1, 64, 48}}, {{}, offscreen::ModeAnswer{2, 80, 60}}};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_EQ(run.output, std::string("display parameters: 0x00000001, 64, 48\n") + display_closed_line +
                              "display parameters: 0x00000002, 80, 60\n"
                              "number of frames: 1\n"
                              "all time: 0.015625  average frametime: 0.015625\n"
                              "average framerate: 64.000000 fps\n" +
                              display_closed_line);
}

TEST_F(FrameLoop, ChangesTheModeAfterTheLastStageWasMeasured) {
    offscreen::Setup setup = first_start(2);
    setup.events = {key(1, 'm')};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    const Lines calls = loop_calls(run);
    const auto closes = std::find(calls.begin(), calls.end(), "ChangeScreenBuffer()");
    ASSERT_NE(closes, calls.end());
    const Lines before(closes - 3, closes);
    EXPECT_EQ(before, (Lines{"GetMsg()", "GetMsg()", "ElapsedTime()"}));
    // The next pass begins with a reading of the clock, so the time of the requester is not counted.
    const auto opened = std::find_if(closes, calls.end(),
                                     [](const std::string &call) { return call.starts_with("SetPointer"); });
    ASSERT_LT(opened + 1, calls.end());
    EXPECT_EQ(opened[1], "ElapsedTime()");
}

TEST_F(FrameLoop, ChangesTheModeOnceForSeveralRequestsInAPass) {
    offscreen::Setup setup = first_start(3);
    setup.events = {key(1, 'm'), key(1, 'm')};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_EQ(count_calls(run, "OpenScreenTagList"), 2);
}

TEST_F(FrameLoop, DrawsInTheNewSizeAfterAModeChange) {
    offscreen::Setup setup = first_start(3);
    setup.events = {key(1, 'm')};
    setup.answers = {{{}, offscreen::ModeAnswer{0, 64, 48}}, {{}, offscreen::ModeAnswer{5, 200, 100}}};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    // Opening the display rebuilds the palette. This time nothing replaces the palette's message.
    EXPECT_EQ(drawing_calls(run), (Lines{
                                      "WriteChunkyPixels(0, 0, 63, 47, 64)",
                                      "Move(1, 10)",
                                      "Text(\"Zelvo\")",
                                      "Move(1, 38)",
                                      "Text(\"fps:25.60 \")",
                                      "WriteChunkyPixels(0, 0, 199, 99, 200)",
                                      "Move(1, 10)",
                                      "Text(\"R-gamma:1.00 G-gamma:1.00 B-gamma:1.00\")",
                                      "Move(1, 90)",
                                      "Text(\"fps:38.40 \")",
                                      "WriteChunkyPixels(0, 0, 199, 99, 200)",
                                      "Move(1, 10)",
                                      "Text(\"R-gamma:1.00 G-gamma:1.00 B-gamma:1.00\")",
                                      "Move(1, 90)",
                                      "Text(\"fps:51.20 \")",
                                  }));
}

TEST_F(FrameLoop, ShowsEachFrameOnePassAfterItWasDrawn) {
    // After a pass the drawn frame is in the buffer that is shown next.
    offscreen::Setup setup = first_start(4);
    setup.events = {mouse_move(1, 20, 0), mouse_move(2, 20, 0), mouse_move(3, 20, 0)};
    static std::vector<std::uint8_t> drawn;
    drawn.assign(320 * 256, 0);
    setup.on_frame = [](const offscreen::Picture &picture) {
        const bool is_previous = std::equal(drawn.begin(), drawn.end(), picture.pixels.begin());
        note(is_previous ? "previous" : "other");
        const std::vector<std::uint8_t> next(chunkybuf1.get(), chunkybuf1.get() + frame_pixels());
        note(next != drawn ? "moved" : "still");
        drawn = next;
    };
    EXPECT_EQ(run_program(std::move(setup)).notes,
              (Lines{"previous", "moved", "previous", "moved", "previous", "moved", "previous", "moved"}));
}

TEST_F(FrameLoop, PointsItsContextAtTheVisibleBitmapAtTheEndOfEveryPass) {
    offscreen::Setup setup = first_start(2);
    // If the context stayed on another bitmap after the pixels were written, only this pass's texts would be
    // lost.
    setup.on_frame = [](const offscreen::Picture &) { display_context.BitMap = shown_buffers[1]->sb_BitMap; };
    setup.on_picture = [](const offscreen::Picture &) {
        note(display_context.BitMap == shown_buffers[0]->sb_BitMap ? "visible" : "hidden");
    };
    EXPECT_EQ(run_program(std::move(setup)).notes, (Lines{"visible", "visible"}));
}

TEST_F(FrameLoop, KeepsNoEventAndAllocatesNothing) {
    const ProgramRun one_pass = run_program(first_start(1));
    offscreen::Setup setup = first_start(20);
    for (int pass = 1; pass <= 20; ++pass) {
        setup.events.push_back(right_button(pass));
        setup.events.push_back(key(pass, 'p'));
        setup.events.push_back(key(pass, 'b'));
    }
    setup.on_picture = [](const offscreen::Picture &) {
        const Lines held = offscreen::held();
        note(std::to_string(std::count(held.begin(), held.end(), "message")));
    };
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_EQ(run.notes, Lines(20, "0"));
    EXPECT_EQ(run.allocations, one_pass.allocations);
}

} // namespace
