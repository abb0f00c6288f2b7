// SPDX-License-Identifier: MIT
// What tests of the running viewer share: settings folders, the state as text, and checks of how a run ended.
#pragma once

#include "main_68k/viewer_state.h"
#include "support/fixed_texts.h"
#include "support/model_builder.h"
#include "support/program_run.h"
#include "support/settings_text.h"
#include "support/temporary_files.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// Every field of the state, one line each, with exact numbers.
inline std::vector<std::string> state_as_lines(const ViewerState &state) {
    std::vector<std::string> lines;
    const auto add = [&lines](const char *name, double value) {
        std::array<char, 96> line{};
        std::snprintf(line.data(), line.size(), "%s=%.17g", name, value);
        lines.emplace_back(line.data());
    };
    const auto add_vector = [&add](const char *name, const Vec3 &v) {
        add((std::string(name) + ".x").c_str(), double{v.x});
        add((std::string(name) + ".y").c_str(), double{v.y});
        add((std::string(name) + ".z").c_str(), double{v.z});
    };
    add("red gamma", state.gammas.red);
    add("green gamma", state.gammas.green);
    add("blue gamma", state.gammas.blue);
    add("rotate", state.rotate);
    add("obj_style", state.obj_style);
    add("clear_style", state.clear_style);
    add("fps", state.fps);
    add("dots", state.dots);
    add("dot_lum", state.dot_lum);
    add("dot_lum_in_blur", state.dot_lum_in_blur);
    add("internal_c2p_enabled", state.internal_c2p_enabled);
    lines.push_back(std::string("envmap_filename=") + state.envmap_filename.data());
    add("ModeID", state.ModeID);
    add("width", state.width);
    add("height", state.height);
    add("lightsource_rotating", state.lightsource_rotating);
    add("flip", state.flip);
    add("doubleside", state.doubleside);
    add("tilt_x", state.tilt_x);
    add("tilt_y", state.tilt_y);
    add("spin_angle", state.spin_angle);
    add_vector("light_base", state.light_base);
    add_vector("light_source", state.light_source);
    add_vector("light", state.light);
    lines.push_back(std::string("message_line=") + state.message_line.data());
    add("message_timer", state.message_timer);
    add("frames_drawn", state.frames_drawn);
    return lines;
}

/// The texts that the program drew, in order, without their quotes.
inline std::vector<std::string> texts_drawn(const ProgramRun &run) {
    std::vector<std::string> texts;
    for (const std::string &call : run.calls) {
        if (call.starts_with("Text(\"")) {
            texts.push_back(call.substr(6, call.size() - 8));
        }
    }
    return texts;
}

/// How many calls begin with this text.
inline int count_calls(const ProgramRun &run, const std::string &beginning) {
    return static_cast<int>(std::count_if(run.calls.begin(), run.calls.end(), [&](const std::string &call) {
        return call.starts_with(beginning);
    }));
}

/// The position of the first call that begins with this text; the number of calls if there is none.
inline std::ptrdiff_t call_place(const ProgramRun &run, const std::string &beginning) {
    return std::find_if(run.calls.begin(), run.calls.end(),
                        [&](const std::string &call) { return call.starts_with(beginning); }) -
           run.calls.begin();
}

/// A file requester's answer.
inline offscreen::Answer chosen_file(const std::string &drawer, const std::string &name) {
    return {offscreen::FileAnswer{drawer, name}, {}};
}

/// A screen-mode requester's answer.
inline offscreen::Answer chosen_mode(ULONG mode_id, ULONG width, ULONG height) {
    return {{}, offscreen::ModeAnswer{mode_id, width, height}};
}

/// Checks that a run failed with this output and gave everything back.
inline void expect_failure(const ProgramRun &run, const std::string &output) {
    EXPECT_EQ(run.exit_code, 20);
    EXPECT_EQ(run.output, output);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.held, std::vector<std::string>{});
}

/// Checks that a run ended normally with only this on standard error, and gave everything back.
inline void expect_normal_end(const ProgramRun &run, const std::string &errors = "") {
    EXPECT_EQ(run.exit_code, 0) << run.output;
    EXPECT_EQ(run.errors, errors);
    EXPECT_EQ(run.held, std::vector<std::string>{});
}

/// Tests whose runs have their own settings folders, empty at first.
class ViewerTest : public testing::Test {
protected:
    /// A run begins with the state of this process, which other tests may have changed.
    ViewerTest() { reset_program_state(); }

    /// A set-up without a settings file, so that the screen-mode requester opens the display.
    offscreen::Setup first_start(int passes = 1, const std::string &object = "cube") const {
        offscreen::Setup setup = viewer_setup(object, passes);
        setup.volumes["ENV"] = env.folder();
        setup.volumes["ENVARC"] = envarc.folder();
        return setup;
    }

    /// A set-up with a settings file that has the defaults except these values.
    offscreen::Setup later_start(int passes = 1,
                                 const std::map<std::string, std::string> &changes = {}) const {
        env.write("Zelvo.vars", settings_text(changes));
        return first_start(passes);
    }

    TemporaryFiles env;
    TemporaryFiles envarc;
};
