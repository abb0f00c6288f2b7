// SPDX-License-Identifier: MIT
// Tests of how frames reach the screen.
#include "display/frame_buffers.h"
#include "display/presentation.h"
#include "support/open_display.h"
#include "support/viewer_test.h"

namespace {

using Lines = std::vector<std::string>;

class Presentation : public DisplayTest {
protected:
    /// Sets pixel i of a buffer to (i * factor) mod 256.
    static void fill(std::uint8_t *buffer, std::size_t count, unsigned factor) {
        for (std::size_t i = 0; i < count; ++i) {
            buffer[i] = static_cast<std::uint8_t>(i * factor);
        }
    }

    static std::vector<std::uint8_t> visible() { return host::state.screens.back()->shown->pixels; }
};

TEST_F(Presentation, ShowsTheFrameOfThePreviousPass) {
    viewer.width = 40;
    viewer.height = 30;
    open_display();
    (void)new_calls();
    fill(chunkybuf1.get(), 1200, 3);
    fill(chunkybuf2.get(), 1200, 7);
    show_previous_frame();
    EXPECT_EQ(new_calls(), Lines{"WriteChunkyPixels(0, 0, 39, 29, 40)"});
    EXPECT_EQ(visible(), std::vector<std::uint8_t>(chunkybuf2.get(), chunkybuf2.get() + 1200));
    swap_frame_buffers();
    show_previous_frame();
    for (std::size_t i = 0; i < 1200; ++i) {
        ASSERT_EQ(visible()[i], static_cast<std::uint8_t>(i * 3)) << i;
    }
}

TEST_F(Presentation, UsesTheFramesWidthForRowsNotTheBitmaps) {
    set_frame(10, 6);
    fill(chunkybuf2.get(), 60, 1);
    for (const int bitmap_width : {4, 10, 16}) {
        BitMap bitmap(bitmap_width, 8);
        display_context.BitMap = &bitmap;
        show_previous_frame();
        for (int y = 0; y < 8; ++y) {
            for (int x = 0; x < bitmap_width; ++x) {
                const int expected = x < 10 && y < 6 ? y * 10 + x : 0;
                ASSERT_EQ(bitmap.pixels[static_cast<std::size_t>(y * bitmap_width + x)], expected)
                    << x << ", " << y << " of " << bitmap_width;
            }
        }
    }
    EXPECT_EQ(new_calls(), Lines(3, "WriteChunkyPixels(0, 0, 9, 5, 10)"));
}

TEST_F(Presentation, ExchangesBothPairsOfBuffersByPointer) {
    open_display();
    const std::uint8_t *chunky[] = {chunkybuf1.get(), chunkybuf2.get()};
    const std::uint8_t *planar[] = {planarbuf1.get(), planarbuf2.get()};
    const std::uint16_t *depths = zbuf.get();
    swap_frame_buffers();
    EXPECT_EQ(chunkybuf1.get(), chunky[1]);
    EXPECT_EQ(chunkybuf2.get(), chunky[0]);
    EXPECT_EQ(planarbuf1.get(), planar[1]);
    EXPECT_EQ(planarbuf2.get(), planar[0]);
    EXPECT_EQ(zbuf.get(), depths);
    swap_frame_buffers();
    EXPECT_EQ(chunkybuf1.get(), chunky[0]);
    EXPECT_EQ(planarbuf1.get(), planar[0]);
}

TEST_F(Presentation, PointsTheContextBackAtTheScreensBitmap) {
    open_display();
    (void)new_calls();
    display_context.BitMap = nullptr;
    reset_display_bitmap();
    EXPECT_EQ(display_context.BitMap, &host::state.screens.back()->bitmap);
    EXPECT_EQ(new_calls(), Lines{});
}

class PresentationInARun : public ViewerTest {
protected:
    /// Notes checksums of each pass's frame and of what the screen shows.
    static void note_pictures(offscreen::Setup &setup) {
        setup.on_frame = [](const offscreen::Picture &frame) { note("frame " + checksum(frame)); };
        setup.on_picture = [](const offscreen::Picture &picture) { note("screen " + checksum(picture)); };
    }

    static std::string checksum(const offscreen::Picture &picture) {
        std::uint64_t sum = 14695981039346656037U;
        for (const std::uint8_t pixel : picture.pixels) {
            sum = (sum ^ pixel) * 1099511628211U;
        }
        return std::to_string(sum);
    }
};

TEST_F(PresentationInARun, ShowsABlackFrameInTheFirstPassAndTheFirstFrameInTheSecond) {
    offscreen::Setup setup = first_start(3);
    setup.on_frame = [](const offscreen::Picture &frame) {
        const auto lit = std::count_if(frame.pixels.begin(), frame.pixels.end(),
                                       [](std::uint8_t pixel) { return pixel != 0; });
        note(lit == 0 ? "black" : "lit");
    };
    EXPECT_EQ(run_program(std::move(setup)).notes, (Lines{"black", "lit", "lit"}));
}

TEST_F(PresentationInARun, NeverShowsAnotherBuffer) {
    offscreen::Setup setup = first_start(5);
    setup.events = {key(1, 'c'), key(2, 'b'), right_button(3)};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_EQ(count_calls(run, "ChangeScreenBuffer"), 1);
    EXPECT_EQ(count_calls(run, "WaitTOF"), 2);
    EXPECT_EQ(count_calls(run, "WriteChunkyPixels"), 5);
    EXPECT_GT(call_place(run, "ChangeScreenBuffer"), call_place(run, "FreeArgs"));
}

TEST_F(PresentationInARun, IsTheSameWithTheInternalConversion) {
    // Both runs show another message than the toggle's, which would differ.
    ProgramRun runs[2];
    for (int enabled = 0; enabled < 2; ++enabled) {
        offscreen::Setup setup = later_start(6, {{"internal c2p enabled", std::to_string(enabled)}});
        setup.events = {raw_key(1, 0x4E), mouse_move(2, 30, 10), right_button(3)};
        note_pictures(setup);
        runs[enabled] = run_program(std::move(setup));
        expect_normal_end(runs[enabled]);
    }
    EXPECT_EQ(runs[0].notes.size(), 12U);
    EXPECT_EQ(runs[0].notes, runs[1].notes);
    EXPECT_EQ(runs[0].calls, runs[1].calls);
    EXPECT_EQ(runs[0].output, runs[1].output);
}

TEST_F(PresentationInARun, ChangesOnlyItsTextsWhenTheConversionIsToggled) {
    ProgramRun runs[2];
    for (int toggled = 0; toggled < 2; ++toggled) {
        offscreen::Setup setup = later_start(4);
        if (toggled != 0) {
            setup.events = {key(1, 'c'), key(2, 'c')};
        }
        setup.on_frame = [](const offscreen::Picture &frame) { note(checksum(frame)); };
        runs[toggled] = run_program(std::move(setup));
        expect_normal_end(runs[toggled]);
    }
    EXPECT_EQ(runs[0].notes, runs[1].notes);
    Lines texts = texts_drawn(runs[1]);
    std::erase_if(texts, [](const std::string &text) { return text.starts_with("fps:"); });
    EXPECT_EQ(texts, (Lines{"Zelvo", "internal c2p enabled", "system c2p enabled", "system c2p enabled"}));
    EXPECT_EQ(texts_drawn(runs[0]).at(7), texts_drawn(runs[1]).at(7));
}

TEST_F(PresentationInARun, PutsTheTextsOnTopOfTheFrame) {
    offscreen::Setup setup = first_start(2);
    static std::vector<std::uint8_t> frame_pixels_of_pass;
    setup.on_frame = [](const offscreen::Picture &frame) {
        frame_pixels_of_pass.assign(frame.pixels.begin(), frame.pixels.end());
    };
    setup.on_picture = [](const offscreen::Picture &picture) {
        // "Zelvo" covers 5 cells from x = 1 in rows 4 to 11. The counter's ten characters cover rows 240 to
        // 247.
        int outside = 0;
        int inside = 0;
        for (int y = 0; y < 256; ++y) {
            for (int x = 0; x < 320; ++x) {
                const bool in_message = x >= 1 && x < 41 && y >= 4 && y < 12;
                const bool in_counter = x >= 1 && x < 81 && y >= 240 && y < 248;
                const auto at = static_cast<std::size_t>(y * 320 + x);
                const bool differs = picture.pixels[at] != frame_pixels_of_pass[at];
                (in_message || in_counter ? inside : outside) += differs ? 1 : 0;
            }
        }
        note(std::string(inside > 50 ? "texts" : "no texts") + ", " + std::to_string(outside) + " outside");
    };
    EXPECT_EQ(run_program(std::move(setup)).notes, Lines(2, "texts, 0 outside"));
}

} // namespace
