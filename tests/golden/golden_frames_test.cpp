// SPDX-License-Identifier: MIT
// Every frame of every golden case, exact to the byte.
#include "support/program_run.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <lzma.h>
#include <openssl/evp.h>
#include <sstream>

#include "platform/offscreen/input_script.h"

namespace {

/// One line of cases.txt.
struct GoldenCase {
    std::string object;
    std::string script;
    int width = 0;
    int height = 0;
    int passes = 0;

    std::string size() const { return std::to_string(width) + "x" + std::to_string(height); }
    std::string name() const { return object + "." + script + "." + size(); }
};

/// The frame of one pass: a binary PGM, and where its pixels begin.
struct Frame {
    std::string pgm;
    std::size_t header = 0;
};

std::vector<GoldenCase> golden_cases() {
    std::vector<GoldenCase> cases;
    std::ifstream file(test_file("golden/cases.txt"));
    std::string line;
    while (std::getline(file, line)) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        GoldenCase golden;
        char by = 0;
        std::istringstream(line) >> golden.object >> golden.script >> golden.width >> by >> golden.height >>
            golden.passes;
        cases.push_back(golden);
    }
    return cases;
}

std::vector<std::string> expected_hashes(const GoldenCase &golden) {
    std::ifstream file(test_file("golden/expected/" + golden.name() + ".txt"));
    return {std::istream_iterator<std::string>(file), std::istream_iterator<std::string>()};
}

std::string sha256(const std::string &bytes) {
    std::array<unsigned char, 32> digest{};
    EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, EVP_sha256(), nullptr);
    std::string text;
    for (const unsigned char byte : digest) {
        constexpr char digits[] = "0123456789abcdef";
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

std::string frame_header(int width, int height) {
    return "P5\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n";
}

/// All expected frames of a case, one after another.
std::string expected_frames(const GoldenCase &golden) {
    std::ifstream file(test_file("golden/frames/" + golden.name() + ".pgm.xz"), std::ios::binary);
    const std::string packed{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::size_t frame_bytes =
        frame_header(golden.width, golden.height).size() +
        static_cast<std::size_t>(golden.width) * static_cast<std::size_t>(golden.height);
    std::string frames(frame_bytes * static_cast<std::size_t>(golden.passes), '\0');
    std::uint64_t memory_limit = UINT64_MAX;
    std::size_t in = 0;
    std::size_t out = 0;
    const lzma_ret result = lzma_stream_buffer_decode(
        &memory_limit, 0, nullptr, reinterpret_cast<const std::uint8_t *>(packed.data()), &in, packed.size(),
        reinterpret_cast<std::uint8_t *>(frames.data()), &out, frames.size());
    EXPECT_EQ(result, LZMA_OK) << "the expected frames of " << golden.name() << " do not unpack";
    frames.resize(out);
    return frames;
}

/// Writes the frame, and a picture of where it differs, and says where they are.
std::string explain_difference(const GoldenCase &golden, int pass, const std::string &actual) {
    const std::filesystem::path folder = std::filesystem::current_path() / "golden-differences";
    std::filesystem::create_directories(folder);
    const std::string stem = (folder / (golden.name() + ".pass" + std::to_string(pass))).string();
    std::ofstream(stem + ".actual.pgm", std::ios::binary) << actual;

    const std::size_t header = frame_header(golden.width, golden.height).size();
    const std::string frames = expected_frames(golden);
    const std::string expected =
        frames.substr(static_cast<std::size_t>(pass - 1) * actual.size(), actual.size());
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
    const std::vector<std::string> expected = expected_hashes(golden);
    ASSERT_EQ(expected.size(), static_cast<std::size_t>(golden.passes));

    offscreen::Setup setup = viewer_setup(golden.object, golden.passes);
    setup.default_mode = {0, static_cast<ULONG>(golden.width), static_cast<ULONG>(golden.height)};
    std::ifstream script(test_file("golden/scripts/" + golden.script + ".txt"));
    ASSERT_TRUE(script);
    ASSERT_FALSE(offscreen::read_script(script, setup));
    // The run's process tells the hash of each frame, and the frame itself where it differs first.
    bool has_differed = false;
    setup.on_frame = [&](const offscreen::Picture &picture) {
        const std::string pgm = frame_header(picture.width, picture.height) +
                                std::string(picture.pixels.begin(), picture.pixels.end());
        const std::string hash = sha256(pgm);
        note(hash);
        if (!has_differed && hash != expected[static_cast<std::size_t>(picture.pass - 1)]) {
            has_differed = true;
            std::fputs((explain_difference(golden, picture.pass, pgm) + "\n").c_str(), stderr);
        }
    };

    const ProgramRun run = run_program(std::move(setup));
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_TRUE(run.notes == expected) << run.errors;
}

TEST_P(GoldenFrames, AreKeptAsPicturesOfTheSameHashes) {
    const GoldenCase &golden = GetParam();
    const std::vector<std::string> expected = expected_hashes(golden);
    const std::string frames = expected_frames(golden);
    const std::size_t frame_bytes = frames.size() / expected.size();
    for (std::size_t pass = 0; pass < expected.size(); ++pass) {
        ASSERT_EQ(sha256(frames.substr(pass * frame_bytes, frame_bytes)), expected[pass])
            << "pass " << pass + 1;
    }
}

INSTANTIATE_TEST_SUITE_P(AllCases, GoldenFrames, testing::ValuesIn(golden_cases()),
                         [](const testing::TestParamInfo<GoldenCase> &test) {
                             std::string name = test.param.name();
                             std::replace(name.begin(), name.end(), '.', '_');
                             return name;
                         });

} // namespace
