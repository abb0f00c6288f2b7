// SPDX-License-Identifier: MIT
// Tests of a display that does not open, in runs of the whole program.
#include "support/viewer_test.h"

namespace {

using Lines = std::vector<std::string>;

class DisplayFailure : public ViewerTest {
protected:
    ProgramRun run_refusing(const std::string &refused) const {
        offscreen::Setup setup = first_start();
        setup.refused = {refused};
        return run_program(std::move(setup));
    }

    /// A run whose screen-mode requester is answered with this size.
    ProgramRun run_of_size(LONG width, LONG height) const {
        offscreen::Setup setup = first_start();
        setup.answers = {
            {{}, offscreen::ModeAnswer{0, static_cast<ULONG>(width), static_cast<ULONG>(height)}}};
        return run_program(std::move(setup));
    }

    static std::string display_line(LONG width, LONG height) {
        return "display parameters: 0x00000000, " + std::to_string(width) + ", " + std::to_string(height) +
               "\n";
    }

    /// The calls after the last attempt to open something of the display.
    static Lines calls_after(const ProgramRun &run, const std::string &beginning) {
        std::ptrdiff_t last = 0;
        for (std::ptrdiff_t i = 0; i < std::ssize(run.calls); ++i) {
            if (run.calls[static_cast<std::size_t>(i)].starts_with(beginning)) {
                last = i + 1;
            }
        }
        return {run.calls.begin() + last, run.calls.end()};
    }

    /// The calls that end a run: these, between the release of the command line and that of the libraries.
    static Lines ending_with(const Lines &middle) {
        Lines calls{"FreeArgs()"};
        calls.insert(calls.end(), middle.begin(), middle.end());
        for (const char *library : {"asl", "lowlevel", "intuition", "graphics"}) {
            calls.emplace_back("DropInterface()");
            calls.push_back(std::string("CloseLibrary(") + library + ".library)");
        }
        return calls;
    }
};

TEST_F(DisplayFailure, OfTheScreenClosesNothing) {
    const ProgramRun run = run_refusing("OpenScreenTagList");
    expect_failure(run, std::string(default_display_line) + "Couldn't open screen\n");
    EXPECT_EQ(calls_after(run, "OpenScreenTagList"), ending_with({}));
}

TEST_F(DisplayFailure, OfTheWindowClosesTheScreen) {
    const ProgramRun run = run_refusing("OpenWindowTagList");
    expect_failure(run, std::string(default_display_line) + "Couldn't open window\n");
    EXPECT_EQ(calls_after(run, "OpenWindowTagList"), ending_with({"CloseScreen()"}));
}

TEST_F(DisplayFailure, OfTheFirstScreenBufferIsPrintedTwiceAndShowsNoBuffer) {
    const ProgramRun run = run_refusing("AllocScreenBuffer#1");
    expect_failure(run, std::string(default_display_line) +
                            "AllocScreenBuffer() failed\nAllocScreenBuffer() failed");
    EXPECT_EQ(count_calls(run, "AllocScreenBuffer"), 3);
    EXPECT_EQ(calls_after(run, "AllocScreenBuffer"),
              ending_with({"FreeScreenBuffer()", "FreeScreenBuffer()", "CloseWindow()", "CloseScreen()"}));
}

TEST_F(DisplayFailure, OfTheSecondOrThirdScreenBufferIsPrintedTwiceAroundTheClose) {
    for (const char *refused : {"AllocScreenBuffer#2", "AllocScreenBuffer#3"}) {
        const ProgramRun run = run_refusing(refused);
        expect_failure(run, std::string(default_display_line) + "AllocScreenBuffer() failed\n" +
                                display_closed_line + "AllocScreenBuffer() failed");
        EXPECT_EQ(calls_after(run, "AllocScreenBuffer"),
                  ending_with({"ChangeScreenBuffer()", "WaitTOF()", "WaitTOF()", "FreeScreenBuffer()",
                               "FreeScreenBuffer()", "CloseWindow()", "CloseScreen()"}));
    }
}

TEST_F(DisplayFailure, OfAllScreenBuffersIsPrintedTwice) {
    const ProgramRun run = run_refusing("AllocScreenBuffer");
    expect_failure(run, std::string(default_display_line) +
                            "AllocScreenBuffer() failed\nAllocScreenBuffer() failed");
    EXPECT_EQ(calls_after(run, "AllocScreenBuffer"), ending_with({"CloseWindow()", "CloseScreen()"}));
}

TEST_F(DisplayFailure, OfAScreenBufferInAModeChangeIsTheSame) {
    offscreen::Setup setup = first_start(3);
    setup.events = {key(2, 'm')};
    setup.refused = {"AllocScreenBuffer#6"};
    const ProgramRun run = run_program(std::move(setup));
    expect_failure(run, std::string(default_display_line) + display_closed_line + default_display_line +
                            "AllocScreenBuffer() failed\n" + display_closed_line +
                            "AllocScreenBuffer() failed");
}

TEST_F(DisplayFailure, OfAnImpossibleSizeIsAFailureOfTheScreen) {
    const std::vector<std::pair<LONG, LONG>> sizes{{0, 256},   {320, 0}, {0, 0}, {16385, 1},
                                                   {1, 16385}, {-5, -5}, {0, -1}};
    for (const auto &[width, height] : sizes) {
        expect_failure(run_of_size(width, height), display_line(width, height) + "Couldn't open screen\n");
    }
}

TEST_F(DisplayFailure, OfANegativeOrOverflowingAreaIsAFailureOfTheFirstBuffer) {
    // 46341 squared is the first square beyond 2^31 - 1.
    const std::vector<std::pair<LONG, LONG>> sizes{
        {-1, 256}, {320, -256}, {65536, 65536}, {46341, 46341}, {2147483647, 2}, {-2147483648, -2147483648}};
    for (const auto &[width, height] : sizes) {
        const ProgramRun run = run_of_size(width, height);
        expect_failure(run, display_line(width, height) + "Couldn't allocate *chunkybuf1 memory\n");
        EXPECT_EQ(count_calls(run, "OpenScreenTagList"), 0);
    }
}

TEST_F(DisplayFailure, OfASizeInTheSettingsComesAfterTheObject) {
    const ProgramRun run = run_program(later_start(1, {{"width", "0"}}));
    expect_failure(run, "Couldn't open screen\n");
    EXPECT_LT(call_place(run, "open_file(Zelvo_envmap.chunky"), call_place(run, "OpenScreenTagList"));
    expect_failure(run_program(later_start(1, {{"height", "-1"}})), "Couldn't allocate *chunkybuf1 memory\n");
}

TEST_F(DisplayFailure, NeverDependsOnTheModesNumber) {
    offscreen::Setup setup = first_start();
    setup.answers = {{{}, offscreen::ModeAnswer{0xFFFFFFFF, 320, 256}}};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_TRUE(run.output.starts_with("display parameters: 0xffffffff, 320, 256\n")) << run.output;
}

} // namespace
