// SPDX-License-Identifier: MIT
// Refuses every call that the system could refuse, and every allocation, one after another.
#include "support/viewer_test.h"

#include <filesystem>
#include <functional>

namespace {

/// What a run does when one of its calls is refused; empty where it goes on.
using Failure = std::string;

bool can_be_refused(const std::string &call) {
    constexpr std::array beginnings{
        "OpenLibrary(",     "GetInterface(",      "ReadArgs(",          "open_file(",
        "AllocAslRequest(", "OpenScreenTagList(", "OpenWindowTagList(", "AllocScreenBuffer(",
    };
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [&](const char *beginning) { return call.starts_with(beginning); });
}

/// By what is refused; `is_running` once the first frame was shown.
Failure failure_of(const std::string &call, bool is_running, bool is_object_asked_for) {
    const auto is = [&call](const std::string &beginning) { return call.starts_with(beginning); };
    if (is("OpenLibrary(graphics") || is("GetInterface(graphics")) {
        return "Couldn't open Gfx V39\n";
    }
    if (is("OpenLibrary(intuition") || is("GetInterface(intuition")) {
        return "Couldn't open Intuition V39\n";
    }
    if (is("OpenLibrary(lowlevel") || is("GetInterface(lowlevel")) {
        return "Couldn't open LowLevel V39\n";
    }
    if (is("OpenLibrary(asl") || is("GetInterface(asl")) {
        return "Couldn't open Asl V38\n";
    }
    if (is("ReadArgs")) {
        // The requester that appears instead is cancelled, unless the object was asked for anyway.
        return is_object_asked_for ? "" : "No filename given\n";
    }
    if (is("AllocAslRequest(0, ASLFR_TitleText=\"Select a LightWave Object\"")) {
        return "No filename given\n";
    }
    if (is("open_file(ENV") || is("AllocAslRequest(")) {
        return "";
    }
    if (is("open_file(Zelvo_envmap.chunky")) {
        // At start-up the requester comes to help, whose initial file is there after all.
        return is_running ? "envmap file open error\n" : "";
    }
    if (is("open_file(")) {
        return "File open error\n";
    }
    if (is("OpenScreenTagList")) {
        return "Couldn't open screen\n";
    }
    return is("OpenWindowTagList") ? "Couldn't open window\n" : "AllocScreenBuffer() failed";
}

/// How often any of the fixed texts stands in an output.
int count_fatal_texts(const std::string &output) {
    int count = 0;
    for (const std::string text : fatal_texts) {
        for (std::size_t at = output.find(text); at != std::string::npos; at = output.find(text, at + 1)) {
            ++count;
        }
    }
    return count;
}

/// What is still held but for the event whose command ended the program: it is replied to after the command,
/// which never comes back.
std::vector<std::string> resources_held(const ProgramRun &run) {
    std::vector<std::string> held = run.held;
    std::erase(held, "message");
    return held;
}

void expect_outcome(const ProgramRun &run, const Failure &failure, const std::string &what) {
    SCOPED_TRACE(what);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(resources_held(run), std::vector<std::string>{});
    if (failure.empty()) {
        EXPECT_EQ(run.exit_code, 0) << run.output;
        EXPECT_EQ(count_fatal_texts(run.output), 0) << run.output;
        EXPECT_NE(run.output.find("average framerate: "), std::string::npos) << run.output;
        EXPECT_TRUE(run.output.ends_with(display_closed_line)) << run.output;
    } else {
        EXPECT_EQ(run.exit_code, 20) << run.output;
        EXPECT_TRUE(run.output.ends_with(failure)) << run.output;
        // That a screen buffer is missing is said as a line as well.
        EXPECT_EQ(count_fatal_texts(run.output), failure.starts_with("AllocScreenBuffer") ? 2 : 1)
            << run.output;
        EXPECT_EQ(run.output.find("average framerate: "), std::string::npos) << run.output;
    }
}

/// Makes the set-up of the next run, with settings folders as the first one found them.
using MakeSetup = std::function<offscreen::Setup()>;

void refuse_every_call(const MakeSetup &make_setup) {
    const ProgramRun undisturbed = run_program(make_setup());
    ASSERT_EQ(undisturbed.exit_code, 0) << undisturbed.output;
    const bool is_object_asked_for = make_setup().command_line.empty();
    int point = 0;
    bool is_running = false;
    for (const std::string &call : undisturbed.calls) {
        is_running = is_running || call.starts_with("WriteChunkyPixels");
        if (can_be_refused(call)) {
            offscreen::Setup refusing = make_setup();
            refusing.refused_point = ++point;
            expect_outcome(run_program(std::move(refusing)),
                           failure_of(call, is_running, is_object_asked_for), call);
        }
    }
    EXPECT_EQ(point, undisturbed.refusable_points);
}

/// An allocation that fails always ends the program.
void refuse_every_allocation(const MakeSetup &make_setup, const std::vector<Failure> &failures) {
    const ProgramRun undisturbed = run_program(make_setup());
    ASSERT_EQ(undisturbed.exit_code, 0) << undisturbed.output;
    ASSERT_EQ(undisturbed.allocations, static_cast<int>(failures.size()));
    for (int number = 1; number <= undisturbed.allocations; ++number) {
        RunOptions options;
        options.refused_allocation = number;
        expect_outcome(run_program(make_setup(), options), failures[static_cast<std::size_t>(number) - 1],
                       "allocation " + std::to_string(number));
    }
}

class EveryRefusal : public ViewerTest {
protected:
    /// A run that uses every command which asks the system for something.
    offscreen::Setup busy_run() const {
        std::filesystem::remove(env.path("Zelvo.vars"));
        std::filesystem::remove(envarc.path("Zelvo.vars"));
        offscreen::Setup setup = first_start(4);
        for (const char character : std::string("tsSwW")) {
            setup.events.push_back(key(1, character));
        }
        setup.events.push_back(key(2, 'm'));
        setup.events.push_back(key(3, 't'));
        setup.events.push_back(key(4, 'm'));
        return setup;
    }

    offscreen::Setup asking_run() const {
        offscreen::Setup setup = first_start(2);
        setup.command_line = {};
        setup.answers = {{offscreen::FileAnswer{test_file("golden/objects"), "cube.lwo"}, {}}};
        return setup;
    }
};

const std::vector<Failure> display_failures{
    "Couldn't allocate *chunkybuf1 memory\n", "Couldn't allocate *chunkybuf2 memory\n",
    "Couldn't allocate *zbuf memory\n",       "Couldn't allocate *planarbuf1 memory\n",
    "Couldn't allocate *planarbuf2 memory\n",
};

const std::vector<Failure> model_failures{
    "Couldn't allocate PNTS chunk memory\n",   "Couldn't allocate POLS chunk memory\n",
    "Couldn't allocate *lwopoints2 memory\n",  "Couldn't allocate *lwopoints3 memory\n",
    "Couldn't allocate *lwonormals2 memory\n", "Couldn't allocate *lwonormals3 memory\n",
    "Couldn't allocate *lwofis memory\n",      "Couldn't allocate envmap filebuffer memory\n",
    "Couldn't allocate 'dot' memory\n",
};

std::vector<Failure> joined(const std::vector<std::vector<Failure>> &lists) {
    std::vector<Failure> all;
    for (const std::vector<Failure> &list : lists) {
        all.insert(all.end(), list.begin(), list.end());
    }
    return all;
}

TEST_F(EveryRefusal, OfACallEndsAFirstStartAsItShould) {
    refuse_every_call([this] { return first_start(2); });
}

TEST_F(EveryRefusal, OfACallEndsALaterStartAsItShould) {
    refuse_every_call([this] { return later_start(2); });
}

TEST_F(EveryRefusal, OfACallEndsAStartThatAsksForItsObjectAsItShould) {
    refuse_every_call([this] { return asking_run(); });
}

TEST_F(EveryRefusal, OfACallEndsABusyRunAsItShould) {
    refuse_every_call([this] { return busy_run(); });
}

TEST_F(EveryRefusal, OfAnAllocationEndsALaterStart) {
    refuse_every_allocation([this] { return later_start(2); }, joined({model_failures, display_failures}));
}

TEST_F(EveryRefusal, OfAnAllocationEndsABusyRun) {
    refuse_every_allocation([this] { return busy_run(); },
                            joined({display_failures, model_failures, display_failures, display_failures}));
}

} // namespace
