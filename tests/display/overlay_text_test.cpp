// SPDX-License-Identifier: MIT
// Tests of the message line and the frame-rate counter.
#include "display/frame_buffers.h"
#include "display/overlay_text.h"
#include "support/open_display.h"
#include "support/viewer_test.h"

#include <cmath>
#include <limits>

namespace {

using Lines = std::vector<std::string>;

class MessageLine : public DisplayTest {};

class FrameRate : public DisplayTest {
protected:
    /// The counter's text after one more pass of this length.
    std::string reading(double seconds) {
        draw_frame_rate(seconds);
        const std::string text = new_calls().back();
        return text.substr(6, text.size() - 8);
    }
};

TEST_F(MessageLine, IsDrawnWholeAtTheTopLeft) {
    show_message("dotlum=%f", 0.8125);
    draw_message_line(0.5);
    EXPECT_EQ(new_calls(), (Lines{"Move(1, 10)", "Text(\"dotlum=0.812500\")"}));
    EXPECT_EQ(viewer.message_timer, 1.5);
}

TEST_F(MessageLine, IsNotDrawnWhenItsTimeIsUp) {
    for (const double timer : {0.0, -0.25}) {
        viewer.message_timer = timer;
        draw_message_line(0.5);
        EXPECT_EQ(new_calls(), Lines{});
        EXPECT_EQ(viewer.message_timer, timer);
    }
}

TEST_F(MessageLine, IsDrawnInThePassInWhichItsTimeRunsOut) {
    viewer.message_timer = 0.01;
    draw_message_line(0.5);
    EXPECT_EQ(new_calls().size(), 2U);
    EXPECT_EQ(viewer.message_timer, 0.01 - 0.5);
}

TEST_F(MessageLine, StaysForTwoSecondsOfFrames) {
    int drawn = 0;
    show_message("stays");
    for (int pass = 0; pass < 40; ++pass) {
        draw_message_line(0.125);
        drawn += new_calls().empty() ? 0 : 1;
    }
    EXPECT_EQ(drawn, 16);
}

TEST_F(MessageLine, IsReplacedAndItsTimeRestartedByTheNext) {
    show_message("the first");
    draw_message_line(1.5);
    show_message("the second");
    EXPECT_EQ(viewer.message_timer, 2.0);
    (void)new_calls();
    draw_message_line(0.0);
    EXPECT_EQ(new_calls(), (Lines{"Move(1, 10)", "Text(\"the second\")"}));
}

TEST_F(MessageLine, MeasuresItsTextEachTime) {
    show_message("%s", "");
    draw_message_line(0.0);
    EXPECT_EQ(new_calls(), (Lines{"Move(1, 10)", "Text(\"\")"}));
    show_message("%s", std::string(127, 'm').c_str());
    draw_message_line(0.0);
    EXPECT_EQ(new_calls().back(), "Text(\"" + std::string(127, 'm') + "\")");
}

TEST_F(MessageLine, PaintsItsCellsInTheTextPenOnBlack) {
    viewer.width = 64;
    viewer.height = 32;
    open_display();
    BitMap &bitmap = *display_context.BitMap;
    std::fill(bitmap.pixels.begin(), bitmap.pixels.end(), std::uint8_t{99});
    show_message("Zl");
    draw_message_line(0.0);
    int white = 0;
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 64; ++x) {
            const int pixel = bitmap.pixels[static_cast<std::size_t>(y * 64 + x)];
            const bool is_cell = x >= 1 && x < 17 && y >= 4 && y < 12;
            white += pixel == 255 ? 1 : 0;
            ASSERT_TRUE(is_cell ? pixel == 255 || pixel == 0 : pixel == 99) << x << ", " << y;
        }
    }
    EXPECT_GT(white, 20);
    EXPECT_LT(white, 100);
}

TEST_F(FrameRate, RisesInFifthsAtASteadyRate) {
    EXPECT_EQ(reading(0.02), "fps:10.00 ");
    EXPECT_EQ(reading(0.02), "fps:20.00 ");
    EXPECT_EQ(reading(0.02), "fps:30.00 ");
    EXPECT_EQ(reading(0.02), "fps:40.00 ");
    EXPECT_EQ(reading(0.02), "fps:50.00 ");
    EXPECT_EQ(reading(0.02), "fps:50.00 ");
}

TEST_F(FrameRate, IsAtTheBottomLeft) {
    draw_frame_rate(0.02);
    EXPECT_EQ(new_calls(), (Lines{"Move(1, 246)", "Text(\"fps:10.00 \")"}));
    frame_height = 75;
    draw_frame_rate(0.02);
    EXPECT_EQ(new_calls().front(), "Move(1, 65)");
}

TEST_F(FrameRate, MovesAboveTheTopOfALowPicture) {
    frame_height = 10;
    draw_frame_rate(0.02);
    EXPECT_EQ(new_calls().front(), "Move(1, 0)");
    frame_height = 3;
    draw_frame_rate(0.02);
    EXPECT_EQ(new_calls().front(), "Move(1, -7)");
}

TEST_F(FrameRate, FillsItsTenCharactersAtAHundred) {
    frame_rates = {0.0, 100.0, 100.0, 100.0, 100.0, 100.0};
    EXPECT_EQ(reading(0.01), "fps:100.00");
}

TEST_F(FrameRate, OverwritesALongerReadingWithBlanks) {
    frame_rates = {0.0, 7.5, 7.5, 7.5, 7.5, 7.5};
    EXPECT_EQ(reading(1.0 / 7.5), "fps:7.50  ");
}

TEST_F(FrameRate, LosesTheLastDigitsFromAThousandOn) {
    frame_rates = {0.0, 1024.0, 1024.0, 1024.0, 1024.0, 0.0};
    EXPECT_EQ(reading(1.0 / 1024.0), "fps:1024.0");
    frame_rates = {0.0, 16384.0, 16384.0, 16384.0, 16384.0, 0.0};
    EXPECT_EQ(reading(1.0 / 16384.0), "fps:16384.");
    frame_rates = {0.0, 1048576.0, 1048576.0, 1048576.0, 1048576.0, 0.0};
    EXPECT_EQ(reading(1.0 / 1048576.0), "fps:104857");
}

TEST_F(FrameRate, CutsEvenTheLongestReading) {
    // 2^100 / 5 is 253530120045645880299340641075.2.
    EXPECT_EQ(reading(std::ldexp(1.0, -100)), "fps:253530");
    frame_rates = {};
    // 2^1022 / 5 has 307 digits and begins with 898846.
    EXPECT_EQ(reading(std::ldexp(1.0, -1022)), "fps:898846");
}

TEST_F(FrameRate, ShowsInfinityOnAStoppedClock) {
    EXPECT_EQ(reading(0.0), "fps:inf   ");
    // Infinity stays in the average until five later readings have replaced it.
    EXPECT_EQ(reading(0.02), "fps:inf   ");
    EXPECT_EQ(reading(0.02), "fps:inf   ");
    EXPECT_EQ(reading(0.02), "fps:inf   ");
    EXPECT_EQ(reading(0.02), "fps:inf   ");
    EXPECT_EQ(reading(0.02), "fps:50.00 ");
}

TEST_F(FrameRate, KeepsTheFiveLatestRatesNewestFirst) {
    for (const double rate : {1.0, 2.0, 4.0, 8.0, 16.0, 32.0}) {
        draw_frame_rate(1.0 / rate);
    }
    EXPECT_EQ(frame_rates, (std::array<double, 6>{62.0 / 5.0, 32.0, 16.0, 8.0, 4.0, 2.0}));
}

class OverlayTexts : public ViewerTest {
protected:
    /// The texts of the counter in a run.
    static Lines readings(const ProgramRun &run) {
        Lines texts = texts_drawn(run);
        std::erase_if(texts, [](const std::string &text) { return !text.starts_with("fps:"); });
        return texts;
    }

    ProgramRun run_with_tick(ULONG tick) const {
        offscreen::Setup setup = first_start(7);
        setup.tick = tick;
        const ProgramRun run = run_program(std::move(setup));
        expect_normal_end(run);
        return run;
    }
};

TEST_F(OverlayTexts, UseTwoStagesInTheFirstPassAndFourLater) {
    // Two readings of 1/256 s give 128 per second, four give 64.
    EXPECT_EQ(readings(run_with_tick(256)), (Lines{"fps:25.60 ", "fps:38.40 ", "fps:51.20 ", "fps:64.00 ",
                                                   "fps:76.80 ", "fps:64.00 ", "fps:64.00 "}));
}

TEST_F(OverlayTexts, ShowASlowClockWithTwoBlanks) {
    // Readings of 1/32 s: 16 per second, then 8.
    EXPECT_EQ(readings(run_with_tick(2048)), (Lines{"fps:3.20  ", "fps:4.80  ", "fps:6.40  ", "fps:8.00  ",
                                                    "fps:9.60  ", "fps:8.00  ", "fps:8.00  "}));
}

TEST_F(OverlayTexts, ShowTheFastestClockInTenCharacters) {
    // Readings of 1/65536 s: 32768 per second, then 16384.
    EXPECT_EQ(readings(run_with_tick(1)), (Lines{"fps:6553.6", "fps:9830.4", "fps:13107.", "fps:16384.",
                                                 "fps:19660.", "fps:16384.", "fps:16384."}));
}

TEST_F(OverlayTexts, ShowAStoppedClockAsInfinity) {
    EXPECT_EQ(readings(run_with_tick(0)), Lines(7, "fps:inf   "));
}

TEST_F(OverlayTexts, KeepTheHistoryWhileTheCounterIsOff) {
    // Off in passes 3 to 5: the third reading shows the third rate, not the sixth.
    offscreen::Setup setup = first_start(7);
    setup.events = {key(2, 'f'), key(5, 'f')};
    EXPECT_EQ(readings(run_program(std::move(setup))),
              (Lines{"fps:25.60 ", "fps:38.40 ", "fps:51.20 ", "fps:64.00 "}));
}

TEST_F(OverlayTexts, KeepTheHistoryOverAResetAndAModeChange) {
    offscreen::Setup setup = first_start(6);
    setup.events = {key(1, 'R'), key(2, 'm'), key(3, 'r'), key(4, 'w')};
    EXPECT_EQ(readings(run_program(std::move(setup))),
              (Lines{"fps:25.60 ", "fps:38.40 ", "fps:51.20 ", "fps:64.00 ", "fps:76.80 ", "fps:64.00 "}));
}

TEST_F(OverlayTexts, AreOutsideAPictureThatIsTooLow) {
    for (const int height : {1, 7, 10}) {
        offscreen::Setup setup = first_start(3);
        setup.default_mode = {0, 64, static_cast<ULONG>(height)};
        const ProgramRun run = run_program(std::move(setup));
        expect_normal_end(run);
        EXPECT_EQ(count_calls(run, "Move(1, " + std::to_string(height - 10) + ")"), 3) << height;
    }
}

} // namespace
