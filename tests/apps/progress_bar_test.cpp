// SPDX-License-Identifier: MIT
// Tests of the progress bar that a long run of zelvo-render draws on a terminal.
#include "render_test.h"

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <regex>
#include <stdexcept>

namespace {

class RenderProgress : public RenderTest {
protected:
    /// Runs far too many passes; `meanwhile` acts on the process while it runs.
    ToolRun long_run(const std::function<void(pid_t)> &meanwhile, const std::string &error_device = {},
                     const std::string &passes = "2000000000") const {
        return run_tool("zelvo-render", cube_arguments({"--passes", passes}),
                        {work.folder(), temporary.folder(), meanwhile, {}, error_device});
    }
};

/// A terminal whose output the test reads.
class Terminal {
public:
    Terminal() : screen(posix_openpt(O_RDWR | O_NOCTTY)) {
        if (screen < 0 || grantpt(screen) != 0 || unlockpt(screen) != 0) {
            throw std::runtime_error("cannot open a terminal");
        }
        name = ptsname(screen);
        // Open here too, so that a test can write a mark after the run's output.
        other_side = open(name.c_str(), O_RDWR | O_NOCTTY);
    }
    ~Terminal() {
        close(other_side);
        close(screen);
    }
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    const std::string &device() const { return name; }

    /// Reads what is shown until `pattern` appears. Gives up after 4096 characters, or after a minute without
    /// output.
    std::string shown_until(const std::regex &pattern) const {
        std::string shown;
        std::array<char, 256> bytes{};
        ssize_t count = 0;
        pollfd readable{screen, POLLIN, 0};
        while (!std::regex_search(shown, pattern) && shown.size() < 4096 && poll(&readable, 1, 60'000) == 1 &&
               (count = read(screen, bytes.data(), bytes.size())) > 0) {
            shown.append(bytes.data(), static_cast<std::size_t>(count));
        }
        return shown;
    }

    /// Reads the rest of what a run showed. The run must have ended.
    std::string rest() const {
        EXPECT_EQ(write(other_side, "end", 3), 3);
        const std::string shown = shown_until(std::regex("end"));
        EXPECT_TRUE(shown.ends_with("end")) << shown;
        return shown.substr(0, shown.rfind("end"));
    }

private:
    int screen;
    int other_side;
    std::string name;
};

TEST_F(RenderProgress, IsDrawnOnATerminalAndErased) {
    const Terminal terminal;
    const std::string bar = R"(\r\[\.{40}\] pass \d+ of 2000000000)";
    std::string shown;
    const ToolRun run = long_run(
        [&](pid_t process) {
            // Two bars, the second drawn over the first.
            shown = terminal.shown_until(std::regex(bar + bar));
            kill(process, SIGTERM);
        },
        terminal.device());
    EXPECT_EQ(run.exit_code, 0);
    shown += terminal.rest();
    EXPECT_TRUE(std::regex_match(shown, std::regex("(" + bar + ")+\r\033\\[K"))) << shown;
}

TEST_F(RenderProgress, GrowsWithThePasses) {
    const Terminal terminal;
    // A bar every tenth of a second. Each of the forty hash signs means 10,000 passes.
    std::string shown;
    long_run(
        [&](pid_t process) {
            while (shown.find('#') == std::string::npos) {
                shown = terminal.shown_until(std::regex(R"(\] pass \d+ of)"));
            }
            kill(process, SIGTERM);
        },
        terminal.device(), "400000");
    std::smatch parts;
    ASSERT_TRUE(std::regex_search(shown, parts, std::regex(R"(\[(#+)(\.+)\] pass (\d+) of)"))) << shown;
    EXPECT_EQ(parts[1].length(), std::stoi(parts[3]) / 10000);
    EXPECT_EQ(parts[1].length() + parts[2].length(), 40);
}

TEST_F(RenderProgress, CountsObjectsIfThereAreSeveral) {
    const Terminal terminal;
    Words objects(1000, object("torus"));
    objects.insert(objects.end(), {"--passes", "1000"});
    std::string shown;
    const ToolRun run = run_tool("zelvo-render", cube_arguments(objects),
                                 {work.folder(),
                                  temporary.folder(),
                                  [&](pid_t process) {
                                      shown = terminal.shown_until(std::regex(" of 1001"));
                                      kill(process, SIGTERM);
                                  },
                                  {},
                                  terminal.device()});
    EXPECT_EQ(run.exit_code, 128 + SIGTERM);
    shown += terminal.rest();
    std::smatch parts;
    ASSERT_TRUE(std::regex_search(shown, parts, std::regex(R"(^\r\[(#*)(\.+)\] object (\d+) of 1001)")))
        << shown;
    EXPECT_EQ(parts[1].length(), std::stoi(parts[3]) * 40 / 1001);
    EXPECT_EQ(parts[1].length() + parts[2].length(), 40);
    EXPECT_TRUE(shown.ends_with("\r\033[K")) << shown;
    EXPECT_EQ(shown.find("pass"), std::string::npos) << shown;
}

TEST_F(RenderProgress, IsNeverWrittenToAFile) {
    const ToolRun run = long_run([](pid_t process) {
        // The bar waits for a second before it appears.
        sleep(2);
        kill(process, SIGTERM);
    });
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.errors, "");
}

TEST_F(RenderProgress, IsNotDrawnInAShortRun) {
    const Terminal terminal;
    const auto start = std::chrono::steady_clock::now();
    const ToolRun run = run_tool("zelvo-render", cube_arguments({}),
                                 {work.folder(), temporary.folder(), {}, {}, terminal.device()});
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(run.exit_code, 0);
    // A machine that needs a second for this may show a bar.
    if (took < std::chrono::seconds(1)) {
        EXPECT_EQ(terminal.rest(), "");
    }
}

} // namespace
