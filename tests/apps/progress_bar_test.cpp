// SPDX-License-Identifier: MIT
// The bar that a long run of zelvo-render draws on a terminal, and nowhere else.
#include "render_test.h"

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <regex>

namespace {

class RenderProgress : public RenderTest {
protected:
    /// A run that is far too long, and what happens to it while it runs.
    ToolRun long_run(const std::function<void(pid_t)> &meanwhile, const std::string &error_device = {},
                     const std::string &passes = "2000000000") const {
        return run_tool("zelvo-render", cube_arguments({"--passes", passes}),
                        {work.folder(), temporary.folder(), meanwhile, {}, error_device});
    }
};

/// Takes what a terminal shows until `pattern` is in it; what there is if that is long, or a minute brings no
/// more.
std::string shown_until(int terminal, const std::regex &pattern) {
    std::string shown;
    std::array<char, 256> bytes{};
    ssize_t count = 0;
    pollfd readable{terminal, POLLIN, 0};
    while (!std::regex_search(shown, pattern) && shown.size() < 4096 && poll(&readable, 1, 60'000) == 1 &&
           (count = read(terminal, bytes.data(), bytes.size())) > 0) {
        shown.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return shown;
}

TEST_F(RenderProgress, IsDrawnOnATerminalAndWipedAway) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    ASSERT_EQ(grantpt(terminal), 0);
    ASSERT_EQ(unlockpt(terminal), 0);
    const std::string name = ptsname(terminal);
    // Open here too, to mark where what the run showed ends.
    const int other_side = open(name.c_str(), O_RDWR | O_NOCTTY);
    const std::string bar = R"(\r\[\.{40}\] pass \d+ of 2000000000)";
    std::string shown;
    const ToolRun run = long_run(
        [&](pid_t process) {
            // Two, of which the second is drawn over the first.
            shown = shown_until(terminal, std::regex(bar + bar));
            kill(process, SIGTERM);
        },
        name);
    EXPECT_EQ(run.exit_code, 0);
    ASSERT_EQ(write(other_side, "end", 3), 3);
    shown += shown_until(terminal, std::regex("end"));
    EXPECT_TRUE(std::regex_match(shown, std::regex("(" + bar + ")+\r\033\\[Kend"))) << shown;
    close(other_side);
    close(terminal);
}

TEST_F(RenderProgress, GrowsWithThePasses) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    ASSERT_EQ(grantpt(terminal), 0);
    ASSERT_EQ(unlockpt(terminal), 0);
    const std::string name = ptsname(terminal);
    const int other_side = open(name.c_str(), O_RDWR | O_NOCTTY);
    // A bar a tenth of a second, and a hash of the forty every 10,000 passes.
    std::string shown;
    long_run(
        [&](pid_t process) {
            while (shown.find('#') == std::string::npos) {
                shown = shown_until(terminal, std::regex(R"(\] pass \d+ of)"));
            }
            kill(process, SIGTERM);
        },
        name, "400000");
    close(other_side);
    close(terminal);
    std::smatch parts;
    ASSERT_TRUE(std::regex_search(shown, parts, std::regex(R"(\[(#+)(\.+)\] pass (\d+) of)"))) << shown;
    EXPECT_EQ(parts[1].length(), std::stoi(parts[3]) / 10000);
    EXPECT_EQ(parts[1].length() + parts[2].length(), 40);
}

TEST_F(RenderProgress, CountsObjectsWhereThereAreSeveral) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    ASSERT_EQ(grantpt(terminal), 0);
    ASSERT_EQ(unlockpt(terminal), 0);
    const std::string name = ptsname(terminal);
    const int other_side = open(name.c_str(), O_RDWR | O_NOCTTY);
    Words objects(1000, object("torus"));
    objects.insert(objects.end(), {"--passes", "1000"});
    std::string shown;
    const ToolRun run = run_tool("zelvo-render", cube_arguments(objects),
                                 {work.folder(),
                                  temporary.folder(),
                                  [&](pid_t process) {
                                      shown = shown_until(terminal, std::regex(" of 1001"));
                                      kill(process, SIGTERM);
                                  },
                                  {},
                                  name});
    EXPECT_EQ(run.exit_code, 128 + SIGTERM);
    ASSERT_EQ(write(other_side, "end", 3), 3);
    shown += shown_until(terminal, std::regex("end"));
    close(other_side);
    close(terminal);
    std::smatch parts;
    ASSERT_TRUE(std::regex_search(shown, parts, std::regex(R"(^\r\[(#*)(\.+)\] object (\d+) of 1001)")))
        << shown;
    EXPECT_EQ(parts[1].length(), std::stoi(parts[3]) * 40 / 1001);
    EXPECT_EQ(parts[1].length() + parts[2].length(), 40);
    EXPECT_TRUE(shown.ends_with("\r\033[Kend")) << shown;
    EXPECT_EQ(shown.find("pass"), std::string::npos) << shown;
}

TEST_F(RenderProgress, StaysOutOfAFileHoweverLongTheRun) {
    const ToolRun run = long_run([](pid_t process) {
        // The bar waits for a second before it appears.
        sleep(2);
        kill(process, SIGTERM);
    });
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.errors, "");
}

TEST_F(RenderProgress, LeavesATerminalAloneInAShortRun) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    ASSERT_GE(terminal, 0);
    ASSERT_EQ(grantpt(terminal), 0);
    ASSERT_EQ(unlockpt(terminal), 0);
    const auto start = std::chrono::steady_clock::now();
    const ToolRun run = run_tool("zelvo-render", cube_arguments({}),
                                 {work.folder(), temporary.folder(), {}, {}, ptsname(terminal)});
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(run.exit_code, 0);
    // On a machine that needs a second for this there may be a bar.
    if (took < std::chrono::seconds(1)) {
        EXPECT_EQ(shown_until(terminal, std::regex(".")), "");
    }
    close(terminal);
}

} // namespace
