// SPDX-License-Identifier: MIT
// Every resource that the program asks for is refused once, at the start and in the middle of a run.
#include "support/program_run.h"
#include "support/temporary_files.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <vector>

namespace {

/// All that the program may say on its way out.
const std::vector<std::string> fixed_texts{
    "Couldn't open Gfx V39\n",
    "Couldn't open Intuition V39\n",
    "Couldn't open LowLevel V39\n",
    "Couldn't open Asl V38\n",
    "No filename given\n",
    "File open error\n",
    "Couldn't allocate PNTS chunk memory\n",
    "Couldn't allocate POLS chunk memory\n",
    "Couldn't allocate *lwopoints2 memory\n",
    "Couldn't allocate *lwopoints3 memory\n",
    "Couldn't allocate *lwonormals2 memory\n",
    "Couldn't allocate *lwonormals3 memory\n",
    "Couldn't allocate *lwofis memory\n",
    "Couldn't allocate envmap filebuffer memory\n",
    "envmap file open error\n",
    "Couldn't allocate 'dot' memory\n",
    "Couldn't allocate *chunkybuf1 memory\n",
    "Couldn't allocate *chunkybuf2 memory\n",
    "Couldn't allocate *zbuf memory\n",
    "Couldn't allocate *planarbuf1 memory\n",
    "Couldn't allocate *planarbuf2 memory\n",
    "Couldn't open screen\n",
    "Couldn't open window\n",
};

const std::vector<std::string> model_arrays{
    "Couldn't allocate PNTS chunk memory\n",   "Couldn't allocate POLS chunk memory\n",
    "Couldn't allocate *lwopoints2 memory\n",  "Couldn't allocate *lwopoints3 memory\n",
    "Couldn't allocate *lwonormals2 memory\n", "Couldn't allocate *lwonormals3 memory\n",
    "Couldn't allocate *lwofis memory\n",      "Couldn't allocate envmap filebuffer memory\n",
    "Couldn't allocate 'dot' memory\n",
};

const std::vector<std::string> frame_buffers{
    "Couldn't allocate *chunkybuf1 memory\n", "Couldn't allocate *chunkybuf2 memory\n",
    "Couldn't allocate *zbuf memory\n",       "Couldn't allocate *planarbuf1 memory\n",
    "Couldn't allocate *planarbuf2 memory\n",
};

/// How many of the fixed texts stand in the output.
int texts_in(const std::string &output) {
    return static_cast<int>(
        std::count_if(fixed_texts.begin(), fixed_texts.end(),
                      [&output](const std::string &text) { return output.find(text) != std::string::npos; }));
}

/// A run that goes on: no text, exit code 0.
constexpr char goes_on[] = "";

/// What must come of refusing the call that was recorded as this line, which is the `occurrence`-th of its
/// name, from 1; `is_running` in the frame loop.
std::string text_for(const std::string &call, bool is_running) {
    const std::array<std::pair<const char *, const char *>, 4> libraries{{
        {"graphics.library", "Couldn't open Gfx V39\n"},
        {"intuition.library", "Couldn't open Intuition V39\n"},
        {"lowlevel.library", "Couldn't open LowLevel V39\n"},
        {"asl.library", "Couldn't open Asl V38\n"},
    }};
    if (call.starts_with("OpenLibrary") || call.starts_with("GetInterface")) {
        for (const auto &[name, text] : libraries) {
            if (call.find(name) != std::string::npos) {
                return text;
            }
        }
    }
    if (call.starts_with("OpenScreenTagList")) {
        return "Couldn't open screen\n";
    }
    if (call.starts_with("OpenWindowTagList")) {
        return "Couldn't open window\n";
    }
    if (call.starts_with("AllocScreenBuffer")) {
        return "AllocScreenBuffer() failed\n";
    }
    if (call.starts_with("ReadArgs")) {
        // The requester that appears instead is cancelled.
        return "No filename given\n";
    }
    if (call.starts_with("open_file") && call.find(".lwo") != std::string::npos) {
        return "File open error\n";
    }
    if (call.starts_with("open_file") && call.find(".chunky") != std::string::npos && is_running) {
        return "envmap file open error\n";
    }
    // Settings that cannot be opened, requesters that do not appear, and a texture that opens at the second
    // try.
    return goes_on;
}

bool is_refusable(const std::string &call) {
    constexpr std::array<const char *, 8> names{
        "OpenLibrary(",     "GetInterface(",      "ReadArgs(",          "open_file(",
        "AllocAslRequest(", "OpenScreenTagList(", "OpenWindowTagList(", "AllocScreenBuffer("};
    return std::any_of(names.begin(), names.end(),
                       [&call](const char *name) { return call.starts_with(name); });
}

/// A way to start, and what the user does then.
struct Scenario {
    const char *name;
    bool has_settings;
    const char *keys;
};

void PrintTo(const Scenario &scenario, std::ostream *stream) {
    *stream << scenario.name;
}

class EveryResource : public testing::TestWithParam<Scenario> {
protected:
    /// The keys are pressed one a pass from the second pass on.
    offscreen::Setup setup() const {
        const std::string keys = GetParam().keys;
        offscreen::Setup result = viewer_setup("cube", static_cast<int>(keys.size()) + 3);
        result.default_mode = {0, 64, 48};
        result.volumes = {{"ENV", files.folder()}, {"ENVARC", files.folder()}};
        // A new requester's texture is the default one, also when it is cancelled.
        int pass = 2;
        for (const char character : keys) {
            result.events.push_back(key(pass++, character));
        }
        return result;
    }

    void SetUp() override { write_settings(); }

    /// Runs may save, so that each begins with the same file.
    void write_settings() const {
        std::filesystem::remove(files.path("Zelvo.vars"));
        if (GetParam().has_settings) {
            files.write("Zelvo.vars",
                        "gammas: 1 1 1\nrotate: 1\nobj style: 4\nclear style: 0\nfps: 1\ndots: 1\n"
                        "dot lum: 25600\ndot lum in blur: 2560\ninternal c2p enabled: 0\n"
                        "envmap filename: Zelvo_envmap.chunky\nModeID: 0\nwidth: 64\nheight: 48\n");
        }
    }

    void expect_end(const ProgramRun &run, const std::string &text) const {
        EXPECT_EQ(run.errors, "");
        EXPECT_TRUE(run.held.empty());
        if (text == goes_on) {
            EXPECT_EQ(run.exit_code, 0);
            EXPECT_NE(run.output.find("number of frames: "), std::string::npos);
            EXPECT_EQ(texts_in(run.output), 0) << run.output;
        } else if (text == "AllocScreenBuffer() failed\n") {
            // As a line, what closing says, and once more without a line end.
            EXPECT_EQ(run.exit_code, 20);
            EXPECT_TRUE(run.output.ends_with("AllocScreenBuffer() failed")) << run.output;
            EXPECT_NE(run.output.find(text), std::string::npos) << run.output;
            EXPECT_EQ(texts_in(run.output), 0) << run.output;
        } else {
            EXPECT_EQ(run.exit_code, 20);
            EXPECT_TRUE(run.output.ends_with(text)) << run.output;
            EXPECT_EQ(texts_in(run.output), 1) << run.output;
        }
    }

    const TemporaryFiles files;
};

TEST_P(EveryResource, OfTheHostIsRefusedInTurn) {
    const ProgramRun whole = run_program(setup());
    ASSERT_EQ(whole.exit_code, 0) << whole.output << whole.errors;
    ASSERT_GT(whole.refusable_points, 15);
    std::cout << whole.refusable_points << " calls refused in turn\n";
    for (int point = 1; point <= whole.refusable_points; ++point) {
        write_settings();
        offscreen::Setup refusing = setup();
        refusing.refused_point = point;
        const ProgramRun run = run_program(std::move(refusing));

        int counted = 0;
        const auto refused = std::find_if(run.calls.begin(), run.calls.end(), [&](const std::string &call) {
            return is_refusable(call) && ++counted == point;
        });
        ASSERT_NE(refused, run.calls.end()) << "point " << point;
        SCOPED_TRACE("point " + std::to_string(point) + ", " + *refused);
        const bool is_running = std::any_of(run.calls.begin(), refused, [](const std::string &call) {
            return call.starts_with("WriteChunkyPixels");
        });
        expect_end(run, text_for(*refused, is_running));
    }
}

TEST_P(EveryResource, OfTheHeapIsRefusedInTurn) {
    const ProgramRun whole = run_program(setup());
    ASSERT_EQ(whole.exit_code, 0);
    // In the order in which the program allocates, with one set of frame buffers for each opened display.
    std::vector<std::string> expected = model_arrays;
    const std::string keys = GetParam().keys;
    const auto at = GetParam().has_settings ? expected.end() : expected.begin();
    expected.insert(at, frame_buffers.begin(), frame_buffers.end());
    for (auto changes = std::count(keys.begin(), keys.end(), 'm'); changes > 0; --changes) {
        expected.insert(expected.end(), frame_buffers.begin(), frame_buffers.end());
    }
    ASSERT_EQ(whole.allocations, static_cast<int>(expected.size()));
    std::cout << whole.allocations << " allocations refused in turn\n";
    for (int number = 1; number <= whole.allocations; ++number) {
        SCOPED_TRACE("allocation " + std::to_string(number));
        write_settings();
        RunOptions options;
        options.refused_allocation = number;
        expect_end(run_program(setup(), options), expected[static_cast<std::size_t>(number - 1)]);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Of, EveryResource,
    testing::Values(Scenario{"AStartWithoutSettings", false, ""}, Scenario{"AStartWithSettings", true, ""},
                    Scenario{"AModeChange", true, "m"}, Scenario{"TwoModeChanges", false, "mm"},
                    Scenario{"ATextureChange", true, "t"}, Scenario{"SavingAndLoading", true, "sSwW"},
                    Scenario{"EverythingInOneRun", false, "mtsmSwWt"}),
    [](const testing::TestParamInfo<Scenario> &scenario) { return scenario.param.name; });

} // namespace
