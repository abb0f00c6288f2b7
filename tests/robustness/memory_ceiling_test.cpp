// SPDX-License-Identifier: MIT
// Tests that a small file needs little memory, whatever sizes it claims.
#include "measured_run.h"
#include "support/model_builder.h"
#include "support/settings_text.h"
#include "support/temporary_files.h"

#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

constexpr std::uint32_t largest_size = 0x7FFFFFF0;

/// The test program itself needs a few MiB. A run may add far less than its file claims.
constexpr long ceiling_mib = 64;

const std::string three_points = point_data({{0, 1, 4}, {2, 2, 4}, {1, 0, 1}});
const std::string three_words = word_data({3, 0, 1, 2});

std::string huge_points() {
    return form("LWOB",
                chunk("POLS", three_words + big_endian_16(1)) + claiming("PNTS", largest_size, three_points));
}

class SmallFile : public testing::Test {
protected:
    /// A run that shows every mode for four passes, with the dots on.
    offscreen::Setup setup_for(const std::string &object) {
        offscreen::Setup setup = viewer_setup("cube", 28);
        setup.command_line = {files.write("object.lwo", object)};
        files.write("Zelvo.vars", settings_text({{"obj style", "4"}, {"clear style", "2"}, {"dots", "1"}}));
        setup.volumes["ENV"] = files.folder();
        for (int pass = 2; pass < 28; pass += 4) {
            setup.events.push_back(right_button(pass));
        }
        setup.events.push_back(key(27, 'e'));
        return setup;
    }

    void expect_little(const std::string &object) {
        if (is_sanitized) {
            GTEST_SKIP() << "the sanitizer's own memory is larger";
        }
        const MeasuredRun measured = run_measured(setup_for(object));
        EXPECT_EQ(measured.run.exit_code, 0) << measured.run.output;
        EXPECT_GT(measured.resident_mib, 0);
        EXPECT_LT(measured.resident_mib, ceiling_mib);
    }

    const TemporaryFiles files;
};

TEST_F(SmallFile, ThatClaimsTheMostPointsNeedsLittleMemory) {
    expect_little(huge_points());
}

TEST_F(SmallFile, ThatClaimsTheLongestPolygonListNeedsLittleMemory) {
    expect_little(form("LWOB", chunk("PNTS", three_points) + claiming("POLS", largest_size, three_words)));
}

TEST_F(SmallFile, ThatClaimsTheMostOfBothNeedsLittleMemory) {
    // The end of the file must cut the list short, so the points come from a complete chunk.
    expect_little(form("LWOB", chunk("PNTS", std::string(1200, '\0')) + claiming("POLS", largest_size, "")));
}

TEST_F(SmallFile, ThatUsesTheLargestPointIndexNeedsLittleMemory) {
    const std::string words = word_data({3, 0, 1, 65535});
    expect_little(
        form("LWOB", chunk("POLS", words + big_endian_16(1)) + claiming("PNTS", largest_size, three_points)));
}

/// Address space in use, in bytes.
rlim_t address_space() {
    unsigned long pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

/// Limits how much more the run may allocate.
void allow_more(rlim_t bytes) {
    const rlim_t limit = address_space() + bytes;
    const rlimit both{limit, limit};
    if (setrlimit(RLIMIT_AS, &both) != 0) {
        std::fputs("cannot limit the address space\n", stderr);
    }
}

class BeyondTheMachine : public SmallFile {
protected:
    /// Runs the program with at most this many MiB more than it starts with.
    ProgramRun run_within(rlim_t mib, offscreen::Setup setup) {
        RunOptions options;
        options.before = [mib] { allow_more(mib << 20); };
        return run_program(std::move(setup), options);
    }
};

TEST_F(BeyondTheMachine, EachModelArrayEndsWithItsOwnMessage) {
    if (is_sanitized) {
        GTEST_SKIP() << "the sanitizer needs the address space";
    }
    // Six arrays of 600 MiB and one of a third of that. The limits are in the middle of each.
    constexpr std::uint32_t claimed = 600 << 20;
    const std::string object =
        form("LWOB", chunk("POLS", three_words + big_endian_16(1)) + claiming("PNTS", claimed, three_points));
    const std::pair<rlim_t, std::string> ends[] = {
        {300, "Couldn't allocate PNTS chunk memory\n"},    {900, "Couldn't allocate *lwopoints2 memory\n"},
        {1500, "Couldn't allocate *lwopoints3 memory\n"},  {2100, "Couldn't allocate *lwonormals2 memory\n"},
        {2700, "Couldn't allocate *lwonormals3 memory\n"}, {3100, "Couldn't allocate *lwofis memory\n"},
    };
    for (const auto &[mib, text] : ends) {
        const ProgramRun run = run_within(mib, setup_for(object));
        EXPECT_EQ(run.exit_code, 20);
        EXPECT_EQ(run.output, text) << mib << " MiB";
        EXPECT_EQ(run.errors, "");
        EXPECT_TRUE(run.held.empty());
    }
}

TEST_F(BeyondTheMachine, PolygonListEndsWithItsOwnMessage) {
    if (is_sanitized) {
        GTEST_SKIP() << "the sanitizer needs the address space";
    }
    const ProgramRun run = run_within(
        300,
        setup_for(form("LWOB", chunk("PNTS", three_points) + claiming("POLS", largest_size, three_words))));
    EXPECT_EQ(run.exit_code, 20);
    EXPECT_EQ(run.output, "Couldn't allocate POLS chunk memory\n");
}

TEST_F(BeyondTheMachine, DisplayOfTheLargestSizeEndsWithItsOwnMessage) {
    if (is_sanitized) {
        GTEST_SKIP() << "the sanitizer needs the address space";
    }
    // Frame buffers of 256, 256, 512, 256 and 256 MiB, then the screen's bitmaps of 256 MiB each.
    const std::pair<rlim_t, std::string> ends[] = {
        {128, "Couldn't allocate *chunkybuf1 memory\n"},
        {384, "Couldn't allocate *chunkybuf2 memory\n"},
        {768, "Couldn't allocate *zbuf memory\n"},
        {1152, "Couldn't allocate *planarbuf1 memory\n"},
        {1408, "Couldn't allocate *planarbuf2 memory\n"},
        {1664, "Couldn't open screen\n"},
        {1920, "AllocScreenBuffer() failed"},
    };
    for (const auto &[mib, text] : ends) {
        offscreen::Setup setup = viewer_setup("cube");
        setup.default_mode = {0, 16384, 16384};
        const ProgramRun run = run_within(mib, std::move(setup));
        EXPECT_EQ(run.exit_code, 20);
        EXPECT_TRUE(run.output.ends_with("\n" + text)) << mib << " MiB: " << run.output;
        EXPECT_EQ(run.errors, "");
        EXPECT_TRUE(run.held.empty());
    }
}

} // namespace
