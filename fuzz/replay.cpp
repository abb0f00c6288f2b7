// SPDX-License-Identifier: MIT
// Runs a target over files and folders of inputs, thoroughly, with any compiler.
#include "harness.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
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

/// A small input may take this many seconds of the processor, with its 56 frames, in any build and under
/// emulation.
constexpr double most_seconds = 5.0;
constexpr std::size_t small_bytes = 65536;

/// Runs one input and returns how many seconds of the processor it took.
double replay(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::clock_t start = std::clock();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    if (bytes.size() < small_bytes && seconds > most_seconds) {
        std::fprintf(stderr, "took %.1f s\n", seconds);
        std::exit(EXIT_FAILURE);
    }
    return seconds;
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
    double slowest = 0.0;
    for (int i = 1; i < argc; ++i) {
        for (const std::filesystem::path &input : inputs_in(argv[i])) {
            // Said first, so that the name of an input that ends the process is the last line.
            std::fprintf(stderr, "%s\n", input.filename().c_str());
            slowest = std::max(slowest, replay(input));
            ++replayed;
        }
    }
    std::fprintf(stderr, "%zu inputs, the slowest in %.3f s\n", replayed, slowest);
    // A folder without inputs would pass for the wrong reason.
    return replayed > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
