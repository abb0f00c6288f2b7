// SPDX-License-Identifier: MIT
// Tests that every frame of every golden case is exact to the byte.
#include "support/golden_cases.h"
#include "support/program_run.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "platform/offscreen/input_script.h"

namespace {

/// Writes the frame and a picture of the difference, and says where these files are.
std::string explain_difference(const GoldenCase &golden, int pass, const std::string &expected,
                               const std::string &actual) {
    const std::filesystem::path folder = std::filesystem::current_path() / "golden-differences";
    std::filesystem::create_directories(folder);
    const std::string stem = (folder / (golden.name() + ".pass" + std::to_string(pass))).string();
    std::ofstream(stem + ".actual.pgm", std::ios::binary) << actual;

    const std::size_t header = frame_header(golden.width, golden.height).size();
    std::string difference = actual;
    std::size_t first = std::string::npos;
    for (std::size_t i = header; i < actual.size(); ++i) {
        const bool differs = i >= expected.size() || actual[i] != expected[i];
        difference[i] = differs ? '\xFF' : '\0';
        first = differs ? std::min(first, i) : first;
    }
    std::ofstream(stem + ".difference.pgm", std::ios::binary) << difference;

    std::ostringstream text;
    text << golden.name() << " differs first in pass " << pass;
    if (first != std::string::npos) {
        const auto width = static_cast<std::size_t>(golden.width);
        const std::size_t pixel = first - header;
        text << " at x " << pixel % width << ", y " << pixel / width << ": "
             << int(std::uint8_t(actual[first]))
             << (first < expected.size() ? " instead of " + std::to_string(std::uint8_t(expected[first]))
                                         : "");
    }
    text << "\nactual frame: " << stem << ".actual.pgm\ndifference:   " << stem << ".difference.pgm"
         << "\nto accept the new frames: scripts/accept-golden " << golden.name();
    return text.str();
}

class GoldenFrames : public testing::TestWithParam<GoldenCase> {};

TEST_P(GoldenFrames, AreExactInEveryPass) {
    const GoldenCase &golden = GetParam();
    const std::vector<std::string> expected = expected_frames(golden);
    ASSERT_EQ(expected.size(), static_cast<std::size_t>(golden.passes));
    ASSERT_FALSE(testing::Test::HasFailure());

    offscreen::Setup setup = viewer_setup(golden.object, golden.passes);
    setup.default_mode = {0, static_cast<ULONG>(golden.width), static_cast<ULONG>(golden.height)};
    std::ifstream script(test_file("golden/scripts/" + golden.script + ".txt"));
    ASSERT_TRUE(script);
    ASSERT_FALSE(offscreen::read_script(script, setup));
    // The process of the run notes each exact pass and explains the first one that differs.
    bool has_differed = false;
    setup.on_frame = [&](const offscreen::Picture &picture) {
        const std::string pgm = frame_header(picture.width, picture.height) +
                                std::string(picture.pixels.begin(), picture.pixels.end());
        const std::string &expected_pgm = expected.at(static_cast<std::size_t>(picture.pass - 1));
        if (pgm == expected_pgm) {
            note(std::to_string(picture.pass));
        } else if (!has_differed) {
            has_differed = true;
            std::fputs((explain_difference(golden, picture.pass, expected_pgm, pgm) + "\n").c_str(), stderr);
        }
    };

    const ProgramRun run = run_program(std::move(setup));
    EXPECT_EQ(run.exit_code, 0);
    std::vector<std::string> all_passes;
    for (int pass = 1; pass <= golden.passes; ++pass) {
        all_passes.push_back(std::to_string(pass));
    }
    EXPECT_TRUE(run.notes == all_passes) << run.errors;
}

INSTANTIATE_TEST_SUITE_P(AllCases, GoldenFrames, testing::ValuesIn(golden_cases()),
                         [](const testing::TestParamInfo<GoldenCase> &test) {
                             std::string name = test.param.name();
                             std::replace(name.begin(), name.end(), '.', '_');
                             return name;
                         });

} // namespace
