// SPDX-License-Identifier: MIT
// Work in a process of its own that ends in every way.
#include "core/sanitized.h"
#include "shared/child_process.h"
#include "support/open_descriptors.h"
#include "support/temporary_files.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

namespace {

constexpr ResourceLimits usual_limits{std::size_t{1} << 30, 60.0, 120.0};

struct WorkResult {
    ChildEnd end;
    std::string messages;
};

std::string reason(const WorkResult &result) {
    return reason_of(result.end, "too long", "too much memory");
}

/// Runs the work; `messages` has the kind of each message and its bytes.
WorkResult result_of(const std::function<void()> &work, const ResourceLimits &limits = usual_limits) {
    std::string messages;
    const ChildEnd end = run_in_child(limits, work, [&](char kind, std::string &&bytes) {
        messages += kind;
        messages += bytes;
    });
    return {end, messages};
}

TEST(ChildProcess, SendsMessagesOfAnySize) {
    const std::string large(3'000'000, 'x');
    const WorkResult result = result_of([&] {
        send_to_parent('a', "one");
        send_to_parent('b', "");
        send_to_parent('c', large);
    });
    EXPECT_TRUE(result.end.is_good());
    EXPECT_TRUE(result.messages == "aonebc" + large);
}

TEST(ChildProcess, LeavesNoDescriptorOpen) {
    const int before = open_descriptors();
    result_of([] { send_to_parent('a', "one"); });
    result_of([] { std::_Exit(1); });
    EXPECT_EQ(open_descriptors(), before);
}

TEST(ChildProcess, MayCrash) {
    const WorkResult result = result_of([] {
        send_to_parent('a', "before");
        std::signal(SIGSEGV, SIG_DFL);
        raise(SIGSEGV);
    });
    EXPECT_FALSE(result.end.is_good());
    EXPECT_FALSE(result.end.took_too_long());
    EXPECT_EQ(result.end.signal, SIGSEGV);
    EXPECT_EQ(reason(result), "reading it crashed: Segmentation fault");
    EXPECT_EQ(result.messages, "abefore");
}

TEST(ChildProcess, MayHang) {
    const WorkResult busy = result_of(
        [] {
            for (std::atomic<unsigned> rounds = 0;;) {
                ++rounds;
            }
        },
        {std::size_t{1} << 30, 0.2, 60.0});
    EXPECT_TRUE(busy.end.took_too_long());
    EXPECT_EQ(busy.end.signal, SIGPROF);
    EXPECT_EQ(reason(busy), "too long");
    const WorkResult waiting = result_of([] { pause(); }, {std::size_t{1} << 30, 60.0, 0.2});
    EXPECT_TRUE(waiting.end.took_too_long());
    EXPECT_EQ(waiting.end.signal, SIGALRM);
    EXPECT_EQ(reason(waiting), "too long");
}

TEST(ChildProcess, MayTakeAllMemory) {
    if (is_sanitized) {
        GTEST_SKIP() << "the sanitizer needs more memory than any limit";
    }
    const WorkResult result = result_of(
        [] {
            std::vector<std::vector<char>> all;
            try {
                for (;;) {
                    all.emplace_back(std::size_t{1} << 22);
                }
            } catch (const std::exception &) {
                // As a library might.
            }
        },
        {std::size_t{1} << 27, 60.0, 120.0});
    EXPECT_EQ(result.end.exit_code, exit_out_of_memory);
    EXPECT_EQ(reason(result), "too much memory");
}

TEST(ChildProcess, MayThrow) {
    const WorkResult result = result_of([] { throw std::runtime_error("no"); });
    EXPECT_FALSE(result.end.is_good());
    EXPECT_EQ(result.end.signal, 0);
    EXPECT_EQ(reason(result), "reading it failed");
}

TEST(ChildProcess, CannotWriteFilesOrPrint) {
    const TemporaryFiles files;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const WorkResult result = result_of([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        std::puts("printed");
        std::fputs("printed", stderr);
        std::fflush(stdout);
        std::FILE *file = std::fopen(files.path("new").c_str(), "w");
        const bool is_written = file != nullptr && std::fputs("text", file) >= 0 && std::fclose(file) == 0;
        send_to_parent('w', is_written ? "written" : "refused");
    });
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(result.messages, "wrefused");
    EXPECT_EQ(files.read("new"), "");
}

} // namespace
