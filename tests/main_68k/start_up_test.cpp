// SPDX-License-Identifier: MIT
// Tests of the order of start-up, and of the failures that end it.
#include "main_68k/start_up.h"
#include "object/model.h"
#include "pipeline/rotation.h"
#include "support/model_builder.h"
#include "support/viewer_test.h"

namespace {

using Lines = std::vector<std::string>;

constexpr char open_screen_call[] =
    "OpenScreenTagList(SA_DisplayID=0, SA_Overscan=1, SA_Width=320, SA_Height=256, SA_Depth=8, "
    "SA_AutoScroll=1, SA_Pens=0 1 1 2 1 3 2 0 2 1 2 1, SA_Title=\"<Esc> to quit.\", SA_ShowTitle=0, "
    "SA_Quiet=1, SA_Interleaved=1, SA_Font=topaz.font/8/0/1)";

class StartUp : public ViewerTest {
protected:
    static std::string cube() { return test_file("golden/objects/cube.lwo"); }

    /// A run whose object file has these bytes; the display opens before it is read.
    ProgramRun run_object(const std::string &bytes) const {
        offscreen::Setup setup = first_start();
        setup.command_line = {files.write("object.lwo", bytes)};
        return run_program(std::move(setup));
    }

    TemporaryFiles files;
};

const Lines libraries_opened{
    "OpenLibrary(graphics.library, 39)",  "GetInterface(graphics.library, main, 1)",
    "OpenLibrary(intuition.library, 39)", "GetInterface(intuition.library, main, 1)",
    "OpenLibrary(lowlevel.library, 39)",  "GetInterface(lowlevel.library, main, 1)",
    "OpenLibrary(asl.library, 38)",       "GetInterface(asl.library, main, 1)",
};

TEST_F(StartUp, PrintsOnlyTheDisplayTheStatisticsAndTheCloseOnANormalFirstRun) {
    const ProgramRun run = run_program(first_start(8));
    expect_normal_end(run);
    EXPECT_EQ(run.output, "display parameters: 0x00000000, 320, 256\n"
                          "number of frames: 8\n"
                          "all time: 0.125000  average frametime: 0.015625\n"
                          "average framerate: 64.000000 fps\n"
                          "changescreenbuffer done\n");
}

TEST_F(StartUp, PrintsNoDisplayLineWithASettingsFile) {
    const ProgramRun run = run_program(later_start(8));
    expect_normal_end(run);
    EXPECT_EQ(run.output, "number of frames: 8\n"
                          "all time: 0.125000  average frametime: 0.015625\n"
                          "average framerate: 64.000000 fps\n"
                          "changescreenbuffer done\n");
}

TEST_F(StartUp, OpensTheDisplayBeforeTheObjectIsReadWhenThereAreNoSettings) {
    const ProgramRun run = run_program(first_start());
    Lines expected = libraries_opened;
    const Lines rest{
        "ReadArgs(FILE/A)",
        "open_file(" + cube() + ", rb)",
        "open_file(ENV:Zelvo.vars, r)",
        "AllocAslRequest(2, ASLSM_DoWidth=1, ASLSM_DoHeight=1, ASLSM_DoOverscanType=1)",
        "AslRequest()",
        "FreeAslRequest()",
        open_screen_call,
    };
    expected.insert(expected.end(), rest.begin(), rest.end());
    const std::ptrdiff_t count = static_cast<std::ptrdiff_t>(expected.size());
    ASSERT_GT(std::ssize(run.calls), count);
    EXPECT_EQ(Lines(run.calls.begin(), run.calls.begin() + count), expected);
    EXPECT_LT(call_place(run, "SetPointer"), call_place(run, "open_file(Zelvo_envmap.chunky, rb)"));
    EXPECT_EQ(count_calls(run, "OpenScreenTagList"), 1);
}

TEST_F(StartUp, OpensTheDisplayLastWhenThereAreSettings) {
    const ProgramRun run = run_program(later_start());
    Lines expected = libraries_opened;
    const Lines rest{
        "ReadArgs(FILE/A)",
        "open_file(" + cube() + ", rb)",
        "open_file(ENV:Zelvo.vars, r)",
        "open_file(Zelvo_envmap.chunky, rb)",
        open_screen_call,
    };
    expected.insert(expected.end(), rest.begin(), rest.end());
    const std::ptrdiff_t count = static_cast<std::ptrdiff_t>(expected.size());
    ASSERT_GT(std::ssize(run.calls), count);
    EXPECT_EQ(Lines(run.calls.begin(), run.calls.begin() + count), expected);
    EXPECT_EQ(count_calls(run, "AllocAslRequest"), 0);
}

TEST_F(StartUp, AsksForTheScreenModeBeforeItReadsTheObject) {
    expect_failure(run_object("no object at all"),
                   std::string(default_display_line) + display_closed_line + "This is not a(n) LW object\n");
}

TEST_F(StartUp, ReadsTheSettingsBeforeTheObjectAndOpensNothingForABadOne) {
    offscreen::Setup setup = later_start();
    setup.command_line = {files.write("object.lwo", "no object at all")};
    const ProgramRun run = run_program(std::move(setup));
    expect_failure(run, "This is not a(n) LW object\n");
    EXPECT_EQ(run.calls.at(static_cast<std::size_t>(call_place(run, "open_file(ENV"))),
              "open_file(ENV:Zelvo.vars, r)");
    EXPECT_EQ(count_calls(run, "OpenScreenTagList"), 0);
}

TEST_F(StartUp, UsesDisplayAndTogglesOfTheSettings) {
    offscreen::Setup setup = later_start(1, {{"ModeID", "-2147483647"},
                                             {"width", "100"},
                                             {"height", "75"},
                                             {"obj style", "4"},
                                             {"clear style", "2"},
                                             {"rotate", "-0.500000"}});
    RunOptions options;
    options.at_end = [] {
        note(std::to_string(viewer.obj_style) + " " + std::to_string(viewer.clear_style) + " " +
             std::to_string(viewer.spin_angle));
    };
    const ProgramRun run = run_program(std::move(setup), options);
    expect_normal_end(run);
    EXPECT_EQ(count_calls(run, "OpenScreenTagList(SA_DisplayID=2147483649, SA_Overscan=1, SA_Width=100, "
                               "SA_Height=75, "),
              1);
    EXPECT_EQ(count_calls(run, "WriteChunkyPixels(0, 0, 99, 74, 100)"), 1);
    EXPECT_EQ(run.notes, Lines{"4 2 -0.500000"});
}

TEST_F(StartUp, PreparesTheObjectInTheSizeOfTheSettings) {
    // The effect mode does not draw the object, so in the first pass its points are still those of the
    // preparation. While the light turns instead of the object they stay so for longer.
    offscreen::Setup setup = later_start(1, {{"width", "640"}, {"height", "480"}, {"obj style", "0"}});
    setup.on_frame = [](const offscreen::Picture &) {
        const auto count = static_cast<std::size_t>(point_count());
        const auto points = [count] {
            std::string text;
            for (std::size_t i = 0; i < count; ++i) {
                const Vec3 &point = lwopoints3[i];
                text += std::to_string(point.x) + " " + std::to_string(point.y) + " " +
                        std::to_string(point.z) + " ";
            }
            return text;
        };
        note(points());
        transform_and_project();
        note(points());
    };
    const ProgramRun run = run_program(std::move(setup));
    ASSERT_EQ(run.notes.size(), 2U);
    EXPECT_EQ(run.notes[0], run.notes[1]);
}

TEST_F(StartUp, UsesTheTextureNameOfTheSettings) {
    const ProgramRun run =
        run_program(later_start(1, {{"envmap filename", test_file("golden/envmap.chunky")}}));
    expect_normal_end(run);
    EXPECT_EQ(count_calls(run, "open_file(" + test_file("golden/envmap.chunky") + ", rb)"), 1);
    EXPECT_EQ(count_calls(run, "open_file(Zelvo_envmap.chunky"), 0);
}

TEST_F(StartUp, RestoresTheDefaultTextureNameBeforeTheSettings) {
    RunOptions options;
    options.before = [] { std::snprintf(viewer.envmap_filename.data(), 8, "another"); };
    const ProgramRun run = run_program(first_start(), options);
    expect_normal_end(run);
    EXPECT_EQ(count_calls(run, "open_file(Zelvo_envmap.chunky, rb)"), 1);
    EXPECT_EQ(count_calls(run, "open_file(another"), 0);
}

TEST_F(StartUp, EndsAtAMissingObjectBeforeAnyRequester) {
    offscreen::Setup setup = first_start();
    setup.command_line = {files.path("missing.lwo")};
    const ProgramRun run = run_program(std::move(setup));
    expect_failure(run, "File open error\n");
    EXPECT_EQ(count_calls(run, "OpenLibrary"), 4);
    EXPECT_EQ(count_calls(run, "AllocAslRequest"), 0);
    EXPECT_EQ(count_calls(run, "open_file(ENV"), 0);
}

TEST_F(StartUp, CannotOpenAFolderAsAnObject) {
    offscreen::Setup setup = first_start();
    setup.command_line = {files.folder()};
    expect_failure(run_program(std::move(setup)), "File open error\n");
}

} // namespace
