// SPDX-License-Identifier: MIT
// Tests of the stage clock and of the three lines printed at the end of a run.
#include "main_68k/run_statistics.h"
#include "support/model_builder.h"
#include "support/viewer_test.h"

#include <chrono>

namespace {

class RunStatistics : public ViewerTest {
protected:
    /// The output of a normal run of this many passes, between opening and closing its display.
    std::string statistics(int passes, std::optional<ULONG> tick) const {
        offscreen::Setup setup = later_start(passes);
        setup.tick = tick;
        const ProgramRun run = run_program(std::move(setup));
        expect_normal_end(run);
        const std::size_t end = run.output.find(display_closed_line);
        EXPECT_EQ(end + std::string(display_closed_line).size(), run.output.size());
        return run.output.substr(0, end);
    }
};

TEST_F(RunStatistics, CountAFrameWhenItBegins) {
    // A pass has four readings of 1/256 s.
    EXPECT_EQ(statistics(1, offscreen::default_tick), "number of frames: 1\n"
                                                      "all time: 0.015625  average frametime: 0.015625\n"
                                                      "average framerate: 64.000000 fps\n");
}

TEST_F(RunStatistics, AddUpFourStagesOfEveryPass) {
    EXPECT_EQ(statistics(40, offscreen::default_tick), "number of frames: 40\n"
                                                       "all time: 0.625000  average frametime: 0.015625\n"
                                                       "average framerate: 64.000000 fps\n");
}

TEST_F(RunStatistics, ReadTheClockAsUnsignedFixedPoint) {
    // The largest reading is 65535 + 65535/65536 seconds; four of them are 262143.99993896484375.
    EXPECT_EQ(statistics(1, 0xFFFFFFFF), "number of frames: 1\n"
                                         "all time: 262143.999939  average frametime: 262143.999939\n"
                                         "average framerate: 0.000004 fps\n");
}

TEST_F(RunStatistics, AreInfinitelyFastOnAStoppedClock) {
    EXPECT_EQ(statistics(3, 0), "number of frames: 3\n"
                                "all time: 0.000000  average frametime: 0.000000\n"
                                "average framerate: inf fps\n");
}

TEST_F(RunStatistics, GrowWithTheRealClock) {
    const auto start = std::chrono::steady_clock::now();
    const std::string text = statistics(5, std::nullopt);
    const std::chrono::duration<double> whole_run = std::chrono::steady_clock::now() - start;
    double frames = 0;
    double all_time = 0;
    double average = 0;
    double rate = 0;
    ASSERT_EQ(std::sscanf(text.c_str(),
                          "number of frames: %lf\nall time: %lf  average frametime: %lf\n"
                          "average framerate: %lf fps\n",
                          &frames, &all_time, &average, &rate),
              4);
    EXPECT_EQ(frames, 5);
    EXPECT_GE(all_time, 0.0);
    EXPECT_LT(all_time, whole_run.count());
    EXPECT_NEAR(average, all_time / 5.0, 1e-6);
}

TEST_F(RunStatistics, IgnoreTheTimeBetweenTheStages) {
    // The clock is also read at the top of each pass. Those readings are not used.
    EXPECT_EQ(statistics(2, 65536), "number of frames: 2\n"
                                    "all time: 8.000000  average frametime: 4.000000\n"
                                    "average framerate: 0.250000 fps\n");
}

TEST(StageClock, StoresEachStageInItsSlotAndAddsUpTotals) {
    reset_program_state();
    offscreen::Setup setup;
    setup.tick = 65536 / 4;
    offscreen::set_up(setup);
    start_stage_clock();
    end_stage(stage_render);
    end_stage(stage_input);
    end_stage(stage_render);
    EXPECT_EQ(stage_seconds, (std::array<double, 5>{0.25, 0.0, 0.0, 0.25, 0.0}));
    EXPECT_EQ(stage_totals, (std::array<double, 5>{0.5, 0.0, 0.0, 0.25, 0.0}));
    EXPECT_EQ(pass_seconds(), 0.5);
}

TEST(StageClock, SumsAllFiveSlots) {
    reset_program_state();
    stage_seconds = {1.0, 2.0, 4.0, 8.0, 16.0};
    EXPECT_EQ(pass_seconds(), 31.0);
}

} // namespace
