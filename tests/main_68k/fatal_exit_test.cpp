// SPDX-License-Identifier: MIT
// Tests of fatal_exit: what it releases and in which order, what it prints, and its exit codes.
#include "core/fatal_exit.h"
#include "display/frame_buffers.h"
#include "object/model.h"
#include "raster/dots.h"
#include "raster/texture_map.h"
#include "support/viewer_test.h"
#include "support/watched_memory.h"

namespace {

class FatalExit : public ViewerTest {};

/// A run that calls fatal_exit before the program has done anything.
ProgramRun end_at_once(const char *text) {
    RunOptions options;
    options.before = [text] { fatal_exit(text); };
    return run_program(offscreen::Setup{}, options);
}

/// The calls from the first one on that begins with this text.
std::vector<std::string> calls_from(const ProgramRun &run, const std::string &beginning) {
    return {run.calls.begin() + call_place(run, beginning), run.calls.end()};
}

/// The calls that give the libraries back.
const std::vector<std::string> libraries_closed{
    "DropInterface()", "CloseLibrary(asl.library)",       "DropInterface()", "CloseLibrary(lowlevel.library)",
    "DropInterface()", "CloseLibrary(intuition.library)", "DropInterface()", "CloseLibrary(graphics.library)",
};

std::vector<std::string> followed_by_libraries(std::vector<std::string> calls) {
    calls.insert(calls.end(), libraries_closed.begin(), libraries_closed.end());
    return calls;
}

/// The calls that give an open display back, after the command line.
const std::vector<std::string> everything_closed = followed_by_libraries({
    "FreeArgs()",
    "ChangeScreenBuffer()",
    "WaitTOF()",
    "WaitTOF()",
    "FreeScreenBuffer()",
    "FreeScreenBuffer()",
    "FreeScreenBuffer()",
    "CloseWindow()",
    "CloseScreen()",
});

void note_what_is_allocated() {
    const auto tell = [](const char *name, bool is_held) {
        if (is_held) {
            note(name);
        }
    };
    tell("lwofis", lwofis != nullptr);
    tell("lwonormals3", lwonormals3 != nullptr);
    tell("lwonormals2", lwonormals2 != nullptr);
    tell("lwopoints3", lwopoints3 != nullptr);
    tell("lwopoints2", lwopoints2 != nullptr);
    tell("envmap", envmap != nullptr);
    tell("dot_image", dot_image != nullptr);
    tell("chunkybuf1", chunkybuf1 != nullptr);
    tell("chunkybuf2", chunkybuf2 != nullptr);
    tell("zbuf", zbuf != nullptr);
    tell("planarbuf1", planarbuf1 != nullptr);
    tell("planarbuf2", planarbuf2 != nullptr);
}

TEST_F(FatalExit, WithATextPrintsItAndEndsWithTwenty) {
    const ProgramRun run = end_at_once("Nothing works\n");
    expect_failure(run, "Nothing works\n");
    EXPECT_EQ(run.calls, std::vector<std::string>{});
}

TEST_F(FatalExit, WithoutATextPrintsNothingAndEndsWithZero) {
    const ProgramRun run = end_at_once(nullptr);
    expect_normal_end(run);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.calls, std::vector<std::string>{});
}

TEST_F(FatalExit, PrintsATextWithoutALineEndAsItIs) {
    expect_failure(end_at_once("AllocScreenBuffer() failed"), "AllocScreenBuffer() failed");
}

TEST_F(FatalExit, PrintsAPercentSignAsItIs) {
    expect_failure(end_at_once("100% of it is gone\n"), "100% of it is gone\n");
}

TEST_F(FatalExit, AtTheFirstLibraryReleasesNothing) {
    offscreen::Setup setup = first_start();
    setup.refused = {"OpenLibrary:graphics.library"};
    const ProgramRun run = run_program(std::move(setup));
    expect_failure(run, "Couldn't open Gfx V39\n");
    EXPECT_EQ(run.calls, std::vector<std::string>{"OpenLibrary(graphics.library, 39)"});
}

TEST_F(FatalExit, BeforeTheDisplayIsOpenSkipsIt) {
    offscreen::Setup setup = first_start();
    setup.command_line = {env.path("missing.lwo")};
    const ProgramRun run = run_program(std::move(setup));
    expect_failure(run, "File open error\n");
    EXPECT_EQ(calls_from(run, "FreeArgs"), followed_by_libraries({"FreeArgs()"}));
}

TEST_F(FatalExit, WithoutAParsedCommandLineFreesNone) {
    offscreen::Setup setup = first_start();
    setup.command_line = {};
    const ProgramRun run = run_program(std::move(setup));
    expect_failure(run, "No filename given\n");
    EXPECT_EQ(calls_from(run, "DropInterface"), libraries_closed);
    EXPECT_EQ(count_calls(run, "FreeArgs"), 0);
}

TEST_F(FatalExit, DuringARunReleasesEverythingInOrder) {
    offscreen::Setup setup = first_start(5);
    setup.on_picture = [](const offscreen::Picture &picture) {
        if (picture.pass == 3) {
            fatal_exit("The third picture is too much\n");
        }
    };
    RunOptions options;
    options.at_end = note_what_is_allocated;
    const ProgramRun run = run_program(std::move(setup), options);
    expect_failure(run, std::string(default_display_line) + display_closed_line +
                            "The third picture is too much\n");
    EXPECT_EQ(calls_from(run, "FreeArgs"), everything_closed);
    EXPECT_EQ(run.notes, std::vector<std::string>{});
}

TEST_F(FatalExit, AfterANormalQuitReleasesTheSame) {
    RunOptions options;
    options.at_end = note_what_is_allocated;
    const ProgramRun run = run_program(first_start(), options);
    expect_normal_end(run);
    EXPECT_EQ(calls_from(run, "FreeArgs"), everything_closed);
    EXPECT_EQ(run.notes, std::vector<std::string>{});
}

TEST_F(FatalExit, FreesMemoryInAFixedOrder) {
    offscreen::Setup setup = first_start();
    setup.on_picture = [](const offscreen::Picture &) {
        watch_memory(zbuf.get(), "zbuf");
        watch_memory(chunkybuf1.get(), "chunkybuf1");
        watch_memory(chunkybuf2.get(), "chunkybuf2");
        watch_memory(planarbuf1.get(), "planarbuf1");
        watch_memory(planarbuf2.get(), "planarbuf2");
        watch_memory(dot_image.get(), "dot_image");
        watch_memory(envmap.get(), "envmap");
        watch_memory(lwopoints2.get(), "lwopoints2");
        watch_memory(lwopoints3.get(), "lwopoints3");
        watch_memory(lwonormals2.get(), "lwonormals2");
        watch_memory(lwonormals3.get(), "lwonormals3");
        watch_memory(lwofis.get(), "lwofis");
    };
    RunOptions options;
    options.at_end = [] {
        note(freed_memory());
        note(call_before_freeing("envmap") + ", " + call_before_freeing("zbuf") + ", " +
             call_before_freeing("dot_image"));
    };
    // The last pass exchanges the frame buffers once more.
    const std::vector<std::string> expected{"lwofis lwonormals3 lwonormals2 lwopoints3 lwopoints2 envmap "
                                            "planarbuf2 planarbuf1 chunkybuf2 chunkybuf1 "
                                            "zbuf dot_image ",
                                            "ElapsedTime(), CloseScreen(), CloseLibrary(graphics.library)"};
    EXPECT_EQ(run_program(std::move(setup), options).notes, expected);
}

TEST_F(FatalExit, EverythingIsStillHeldDuringARun) {
    offscreen::Setup setup = first_start();
    setup.on_picture = [](const offscreen::Picture &) {
        note_what_is_allocated();
        for (const std::string &held : offscreen::held()) {
            note(held);
        }
    };
    const std::vector<std::string> expected{"lwofis",
                                            "lwonormals3",
                                            "lwonormals2",
                                            "lwopoints3",
                                            "lwopoints2",
                                            "envmap",
                                            "dot_image",
                                            "chunkybuf1",
                                            "chunkybuf2",
                                            "zbuf",
                                            "planarbuf1",
                                            "planarbuf2",
                                            "library graphics.library",
                                            "library intuition.library",
                                            "library lowlevel.library",
                                            "library asl.library",
                                            "arguments",
                                            "screen",
                                            "screen buffer",
                                            "screen buffer",
                                            "screen buffer",
                                            "window"};
    EXPECT_EQ(run_program(std::move(setup)).notes, expected);
}

} // namespace
