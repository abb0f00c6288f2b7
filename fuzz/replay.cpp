// SPDX-License-Identifier: MIT
// Runs a target over files and folders of inputs, thoroughly, with any compiler.
#include "harness.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);

namespace {

std::vector<std::filesystem::path> inputs_in(const std::filesystem::path &path) {
    if (!std::filesystem::is_directory(path)) {
        return {path};
    }
    std::vector<std::filesystem::path> inputs;
    for (const auto &entry : std::filesystem::directory_iterator(path)) {
        inputs.push_back(entry.path());
    }
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

/// Most triangles that the plain fillers may draw in a frame, whatever the input claims: no polygon has more
/// triangles than words, and only the last one that the input really holds may reach past its end.
std::int64_t most_triangles(std::size_t input_bytes) {
    constexpr std::int64_t largest_polygon = 65535;
    return static_cast<std::int64_t>(input_bytes / 2) + largest_polygon;
}

/// Runs one input and returns how many triangles it drew in a frame on average.
std::int64_t replay(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    fuzz::work = {};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
    const auto [frames, triangles] = fuzz::work;
    if (triangles > frames * most_triangles(bytes.size())) {
        std::fprintf(stderr, "%zu bytes drew %" PRId64 " triangles in %" PRId64 " frames\n", bytes.size(),
                     triangles, frames);
        std::exit(EXIT_FAILURE);
    }
    return frames > 0 ? triangles / frames : 0;
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s FILE|FOLDER...\n", argv[0]);
        return 2;
    }
    LLVMFuzzerInitialize(&argc, &argv);
    is_thorough = true;
    std::size_t replayed = 0;
    std::int64_t most = 0;
    for (int i = 1; i < argc; ++i) {
        for (const std::filesystem::path &input : inputs_in(argv[i])) {
            // Said first, so that the name of an input that ends the process is the last line.
            std::fprintf(stderr, "%s\n", input.filename().c_str());
            most = std::max(most, replay(input));
            ++replayed;
        }
    }
    std::fprintf(stderr, "%zu inputs, at most %" PRId64 " triangles per frame\n", replayed, most);
    // A folder without inputs would pass for the wrong reason.
    return replayed > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
