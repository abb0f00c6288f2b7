// SPDX-License-Identifier: MIT
// Reads the list of cases and unpacks their frames.
#include "support/golden_cases.h"

#include "support/program_run.h"

#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <lzma.h>
#include <sstream>

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

std::string frame_header(int width, int height) {
    return "P5\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n";
}

std::vector<std::string> expected_frames(const GoldenCase &golden) {
    std::ifstream file(test_file("golden/frames/" + golden.name() + ".pgm.xz"), std::ios::binary);
    const std::string packed{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::string header = frame_header(golden.width, golden.height);
    const std::size_t frame_bytes =
        header.size() + static_cast<std::size_t>(golden.width) * static_cast<std::size_t>(golden.height);
    std::string frames(frame_bytes * static_cast<std::size_t>(golden.passes), '\0');
    std::uint64_t memory_limit = UINT64_MAX;
    std::size_t in = 0;
    std::size_t out = 0;
    const lzma_ret result = lzma_stream_buffer_decode(
        &memory_limit, 0, nullptr, reinterpret_cast<const std::uint8_t *>(packed.data()), &in, packed.size(),
        reinterpret_cast<std::uint8_t *>(frames.data()), &out, frames.size());
    EXPECT_EQ(result, LZMA_OK) << "the expected frames of " << golden.name() << " do not unpack";
    EXPECT_EQ(out, frames.size()) << golden.name() << " has too few frames";
    std::vector<std::string> list;
    for (std::size_t at = 0; at < frames.size(); at += frame_bytes) {
        list.push_back(frames.substr(at, frame_bytes));
        EXPECT_TRUE(list.back().starts_with(header)) << golden.name() << ", frame " << list.size();
    }
    return list;
}
