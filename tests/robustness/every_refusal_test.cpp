// SPDX-License-Identifier: MIT
// Refuses every call that the system could refuse, and every allocation, one per run, at the start and in the
// middle of a run.
#include "support/fixed_texts.h"
#include "support/program_run.h"
#include "support/settings_text.h"
#include "support/temporary_files.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <vector>

namespace {

/// How often a text is in the output.
int count_of(const std::string &output, const std::string &text) {
    int count = 0;
    for (std::size_t at = output.find(text); at != std::string::npos; at = output.find(text, at + 1)) {
        ++count;
    }
    return count;
}

int count_fatal_texts(const std::string &output) {
    int count = 0;
    for (const std::string &text : fatal_texts()) {
        count += count_of(output, text);
    }
    return count;
}

/// Means that the run goes on: no text, exit code 0.
constexpr char goes_on[] = "";

/// A way to start, and what the user does then.
struct Scenario {
    const char *name;
    bool has_settings;
    const char *keys;
    /// Whether there is no command line, so that the object is chosen in the requester.
    bool asks_for_object = false;
};

void PrintTo(const Scenario &scenario, std::ostream *stream) {
    *stream << scenario.name;
}

/// The text with which a run ends when this recorded call is refused. `is_running` is true once the first
/// frame was written.
std::string text_for(const std::string &call, bool is_running, const Scenario &scenario) {
    const auto is = [&call](const std::string &beginning) { return call.starts_with(beginning); };
    for (const auto &[library, text] : library_texts) {
        if (is(std::string("OpenLibrary(") + library) || is(std::string("GetInterface(") + library)) {
            return text;
        }
    }
    if (is("OpenScreenTagList")) {
        return no_screen_text;
    }
    if (is("OpenWindowTagList")) {
        return no_window_text;
    }
    if (is("AllocScreenBuffer")) {
        return no_screen_buffer_text;
    }
    if (is("ReadArgs")) {
        // The object requester appears instead. It is cancelled, unless the scenario answers it.
        return scenario.asks_for_object ? goes_on : no_filename_text;
    }
    if (is("AllocAslRequest(0, ASLFR_TitleText=\"Select a LightWave Object\"")) {
        return no_filename_text;
    }
    if (is("open_file(") && call.find(".lwo") != std::string::npos) {
        return no_file_text;
    }
    if (is("open_file(") && call.find(".chunky") != std::string::npos && is_running) {
        return no_texture_text;
    }
    // The run goes on without settings and without other requesters. A texture at the start opens at the
    // second try.
    return goes_on;
}

bool is_refusable(const std::string &call) {
    constexpr std::array<const char *, 8> names{
        "OpenLibrary(",     "GetInterface(",      "ReadArgs(",          "open_file(",
        "AllocAslRequest(", "OpenScreenTagList(", "OpenWindowTagList(", "AllocScreenBuffer("};
    return std::any_of(names.begin(), names.end(),
                       [&call](const char *name) { return call.starts_with(name); });
}

class EveryRefusal : public testing::TestWithParam<Scenario> {
protected:
    /// Presses one key per pass, from the second pass on. Runs may save settings, so the files are reset.
    offscreen::Setup setup() const {
        std::filesystem::remove(files.path("Zelvo.vars"));
        if (GetParam().has_settings) {
            files.write("Zelvo.vars", settings_text({{"rotate", "1.000000"},
                                                     {"obj style", "4"},
                                                     {"dots", "1"},
                                                     {"width", "64"},
                                                     {"height", "48"}}));
        }
        const std::string keys = GetParam().keys;
        offscreen::Setup result = viewer_setup("cube", static_cast<int>(keys.size()) + 3);
        result.default_mode = {0, 64, 48};
        result.volumes = {{"ENV", files.folder()}, {"ENVARC", files.folder()}};
        if (GetParam().asks_for_object) {
            result.command_line = {};
            result.answers = {{offscreen::FileAnswer{test_file("golden/objects"), "cube.lwo"}, {}}};
        }
        int pass = 2;
        for (const char character : keys) {
            result.events.push_back(key(pass++, character));
        }
        return result;
    }

    static void expect_end(const ProgramRun &run, const std::string &text) {
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(run.held, std::vector<std::string>{});
        const bool has_statistics = run.output.find("average framerate: ") != std::string::npos;
        if (text == goes_on) {
            EXPECT_EQ(run.exit_code, 0);
            EXPECT_EQ(count_fatal_texts(run.output), 0) << run.output;
            EXPECT_TRUE(has_statistics) << run.output;
            EXPECT_TRUE(run.output.ends_with(display_closed_line)) << run.output;
            return;
        }
        EXPECT_EQ(run.exit_code, 20);
        EXPECT_TRUE(run.output.ends_with(text)) << run.output;
        EXPECT_EQ(count_fatal_texts(run.output), text == no_screen_buffer_text ? 2 : 1) << run.output;
        EXPECT_FALSE(has_statistics) << run.output;
    }

    const TemporaryFiles files;
};

TEST_P(EveryRefusal, OfACallEndsTheRunWithItsMessageOrIsHandled) {
    const ProgramRun whole = run_program(setup());
    ASSERT_EQ(whole.exit_code, 0) << whole.output << whole.errors;
    ASSERT_GT(whole.refusable_points, 15);
    ASSERT_EQ(std::count_if(whole.calls.begin(), whole.calls.end(), is_refusable), whole.refusable_points);
    std::cout << whole.refusable_points << " calls refused in turn\n";
    for (int point = 1; point <= whole.refusable_points; ++point) {
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
        const std::string text = text_for(*refused, is_running, GetParam());
        expect_end(run, text);
        // Screen buffers are checked together, and an unreadable command line leads to a requester.
        if (text != goes_on && text != no_screen_buffer_text && text != no_filename_text) {
            EXPECT_FALSE(std::any_of(refused + 1, run.calls.end(), is_refusable)) << "it makes more calls";
        }
    }
}

TEST_P(EveryRefusal, OfAnAllocationEndsTheRunWithItsMessage) {
    const ProgramRun whole = run_program(setup());
    ASSERT_EQ(whole.exit_code, 0);
    // In the order in which the program allocates, with one set of frame buffers for each opened display.
    std::vector<std::string> expected = joined({object_array_texts, texture_and_dot_texts});
    const std::string keys = GetParam().keys;
    const auto at = GetParam().has_settings ? expected.end() : expected.begin();
    expected.insert(at, frame_buffer_texts.begin(), frame_buffer_texts.end());
    for (auto changes = std::count(keys.begin(), keys.end(), 'm'); changes > 0; --changes) {
        expected.insert(expected.end(), frame_buffer_texts.begin(), frame_buffer_texts.end());
    }
    ASSERT_EQ(whole.allocations, static_cast<int>(expected.size()));
    std::cout << whole.allocations << " allocations refused in turn\n";
    for (int number = 1; number <= whole.allocations; ++number) {
        SCOPED_TRACE("allocation " + std::to_string(number));
        RunOptions options;
        options.refused_allocation = number;
        const ProgramRun run = run_program(setup(), options);
        const std::string &text = expected[static_cast<std::size_t>(number - 1)];
        expect_end(run, text);
        // Up to the text the output is as usual. The display is closed first if it is open.
        std::string before =
            run.output.substr(0, run.output.size() - std::min(run.output.size(), text.size()));
        const auto closings = std::count_if(run.calls.begin(), run.calls.end(), [](const std::string &call) {
            return call.starts_with("CloseWindow(");
        });
        EXPECT_EQ(count_of(before, display_closed_line), closings);
        if (!whole.output.starts_with(before) && before.ends_with(display_closed_line)) {
            before.resize(before.size() - std::string(display_closed_line).size());
        }
        EXPECT_TRUE(whole.output.starts_with(before)) << run.output;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Runs, EveryRefusal,
    testing::Values(Scenario{"AStartWithoutSettings", false, ""}, Scenario{"AStartWithSettings", true, ""},
                    Scenario{"AStartThatAsksForItsObject", false, "", true},
                    Scenario{"AModeChange", true, "m"}, Scenario{"TwoModeChanges", false, "mm"},
                    Scenario{"ATextureChange", true, "t"}, Scenario{"SavingAndLoading", true, "sSwW"},
                    Scenario{"EverythingInOneRun", false, "mtsmSwWt"}),
    [](const testing::TestParamInfo<Scenario> &scenario) { return scenario.param.name; });

} // namespace
