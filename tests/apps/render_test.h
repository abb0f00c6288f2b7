// SPDX-License-Identifier: MIT
// What the tests of zelvo-render share.
#pragma once

#include "support/program_run.h"
#include "support/tool_run.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

using Words = std::vector<std::string>;

/// Tests that run zelvo-render in their own folder. Each test also checks that no temporary folders and no
/// half-written files remain.
class RenderTest : public testing::Test {
protected:
    void TearDown() override {
        EXPECT_EQ(names_in(temporary.folder()), std::set<std::string>{});
        for (const auto &entry : std::filesystem::recursive_directory_iterator(work.folder())) {
            EXPECT_NE(entry.path().extension(), ".part") << entry.path();
        }
    }

    ToolRun render(const Words &arguments) const {
        return run_tool("zelvo-render", arguments, {work.folder(), temporary.folder(), {}});
    }

    /// Runs the golden cube with its texture on a display of 100 x 75, with these additional arguments.
    ToolRun render_cube(const Words &arguments = {}) const { return render(cube_arguments(arguments)); }

    static Words cube_arguments(const Words &more) {
        Words arguments{object("cube"), "--envmap", test_file("golden/envmap.chunky"), "--size", "100x75"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }

    static std::string object(const std::string &name) {
        return test_file("golden/objects/" + name + ".lwo");
    }

    /// Writes an input script and returns the arguments that name it.
    Words script(const std::string &lines) const {
        work.write("script.txt", lines);
        return {"--input", "script.txt"};
    }

    static Words joined(Words words, const Words &more) {
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }

    static std::set<std::string> names_in(const std::string &folder) {
        std::set<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(folder)) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

    /// The program's output in an ordinary run of the cube with this many passes of 1/64 s, at a size such as
    /// "100x75".
    static std::string cube_output(int passes, std::string size = "100x75") {
        size.replace(size.find('x'), 1, ", ");
        std::array<char, 300> text{};
        std::snprintf(text.data(), text.size(),
                      "display parameters: 0x00000000, %s\nnumber of frames: %d\n"
                      "all time: %f  average frametime: 0.015625\naverage framerate: 64.000000 fps\n"
                      "changescreenbuffer done\n",
                      size.c_str(), passes, passes / 64.0);
        return text.data();
    }

    static void expect_cube_run(const ToolRun &run, int passes, const std::string &size = "100x75") {
        EXPECT_EQ(run.exit_code, 0) << run.errors;
        EXPECT_EQ(run.output, cube_output(passes, size));
        EXPECT_EQ(run.errors, "");
    }

    /// Checks that the tool refused its arguments and said why.
    static void expect_misuse(const ToolRun &run, const std::string &what) {
        EXPECT_EQ(run.exit_code, 2) << what;
        EXPECT_NE(run.errors, "") << what;
    }

    TemporaryFiles work;
    TemporaryFiles temporary;
};
