// SPDX-License-Identifier: MIT
// Tests of the viewer when there is no memory for its screen or a screen buffer.
#include "main_68k/start_up.h"
#include "platform/sdl/host.h"
#include "platform/window/windowed_host.h"
#include "support/temporary_files.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Chosen so that no other allocation of the process has exactly the picture's size.
constexpr int odd_width = 333;
constexpr int odd_height = 217;

/// The number (from 1) of the picture-sized allocation that fails, and how many there were.
int refused_picture = 0;
int pictures = 0;

bool is_refused(std::size_t size) {
    return size == std::size_t{odd_width} * odd_height && ++pictures == refused_picture;
}

struct Outcome {
    int exit_code;
    std::string output;
    std::string errors;
};

constexpr int still_held = 99;

class NoRoom : public testing::Test {
protected:
    /// Runs one pass of the viewer without a display, with one allocation refused.
    Outcome run(int refused) const {
        std::fflush(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            if (std::freopen(files.path("output").c_str(), "w", stdout) == nullptr ||
                std::freopen(files.path("errors").c_str(), "w", stderr) == nullptr ||
                chdir(files.folder().c_str()) != 0) {
                std::_Exit(127);
            }
            refused_picture = refused;
            std::atexit([] {
                if (!host::state.screens.empty()) {
                    std::_Exit(still_held);
                }
            });
            sdl::set_up({{std::string(ZELVO_TEST_FOLDER) + "/golden/objects/cube.lwo"}, {}});
            host::request_quit();
            start_up(1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), files.read("output"),
                files.read("errors")};
    }

    void SetUp() override {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        setenv("SDL_RENDER_DRIVER", "software", 1);
        setenv("XDG_RUNTIME_DIR", files.folder().c_str(), 1);
        std::filesystem::create_directory(files.path("zelvo"));
        std::filesystem::permissions(files.path("zelvo"), std::filesystem::perms::owner_all);
        files.write(
            "zelvo/Zelvo.vars",
            "gammas: 1 1 1\nrotate: 0\nobj style: 4\nclear style: 0\nfps: 1\ndots: 0\ndot lum: 25600\n"
            "dot lum in blur: 2560\ninternal c2p enabled: 0\nenvmap filename: texture\nModeID: 1\n"
            "width: 333\nheight: 217\n");
        files.write("texture", std::string(65536, 'x'));
    }

    const TemporaryFiles files;
};

} // namespace

// Not inlined, or compilers warn about free() of memory from operator new.
[[gnu::noinline]] void *operator new(std::size_t size) {
    void *made = is_refused(size) ? nullptr : std::malloc(size);
    if (made == nullptr) {
        throw std::bad_alloc();
    }
    return made;
}

[[gnu::noinline]] void operator delete(void *freed) noexcept {
    std::free(freed);
}

[[gnu::noinline]] void operator delete(void *freed, std::size_t) noexcept {
    std::free(freed);
}

TEST_F(NoRoom, ForTheScreenEndsWithTheProgramsMessage) {
    const Outcome ended = run(1);
    EXPECT_EQ(ended.exit_code, 20);
    EXPECT_EQ(ended.output, "Couldn't open screen\n");
    EXPECT_EQ(ended.errors, "zelvo: no memory for a screen of 333 x 217\n");
}

TEST_F(NoRoom, ForAScreenBufferEndsWithTheProgramsMessage) {
    for (const int refused : {2, 3}) {
        const Outcome ended = run(refused);
        EXPECT_EQ(ended.exit_code, 20);
        EXPECT_EQ(ended.output,
                  "AllocScreenBuffer() failed\nchangescreenbuffer done\nAllocScreenBuffer() failed");
        EXPECT_EQ(ended.errors, "zelvo: no memory for a buffer of a screen of 333 x 217\n");
    }
}

TEST_F(NoRoom, IsNotReportedOtherwise) {
    const Outcome ended = run(4);
    EXPECT_EQ(ended.exit_code, 0);
    EXPECT_EQ(ended.errors, "");
}
