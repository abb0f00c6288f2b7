// SPDX-License-Identifier: MIT
// Tests that programs started with a closed standard stream never write its output into their files.
#include "render_test.h"

namespace {

class ClosedStreams : public RenderTest {
protected:
    ToolRun run_without(int descriptor, const std::string &tool, const Words &arguments) const {
        return run_tool(tool, arguments, {work.folder(), temporary.folder(), {}, {descriptor}});
    }
};

TEST_F(ClosedStreams, AreTheNullDeviceForTheRenderer) {
    for (const int descriptor : {0, 1, 2}) {
        // As a script the null device is empty. A missing descriptor could not be opened.
        const Words script{"--input", "/proc/self/fd/" + std::to_string(descriptor)};
        const ToolRun run = run_without(descriptor, "zelvo-render", cube_arguments(script));
        EXPECT_EQ(run.exit_code, 0) << descriptor << ": " << run.errors;
    }
}

TEST_F(ClosedStreams, DoNotDamageTheRenderersPictures) {
    expect_cube_run(render_cube({"--gif", "expected.gif", "--chunky", "expected"}), 1);
    ASSERT_NE(work.read("expected/00001.pgm"), "");
    for (const int descriptor : {0, 1, 2}) {
        const Words outputs{"--gif", "actual.gif", "--chunky", "actual"};
        EXPECT_EQ(run_without(descriptor, "zelvo-render", cube_arguments(outputs)).exit_code, 0);
        EXPECT_TRUE(work.read("actual.gif") == work.read("expected.gif")) << descriptor;
        EXPECT_TRUE(work.read("actual/00001.pgm") == work.read("expected/00001.pgm")) << descriptor;
    }
}

TEST_F(ClosedStreams, AreTheNullDeviceForTheGenerator) {
    for (const int descriptor : {0, 1}) {
        // The error shows that this is the null device: a missing descriptor would not exist.
        const ToolRun run =
            run_without(descriptor, "zelvo-data", {"/proc/self/fd/" + std::to_string(descriptor) + "/data"});
        EXPECT_EQ(run.exit_code, 2);
        EXPECT_NE(run.errors.find("Not a directory"), std::string::npos) << run.errors;
    }
}

} // namespace
