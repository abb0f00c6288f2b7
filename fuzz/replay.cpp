// SPDX-License-Identifier: MIT
// Runs a target with all its checks on files and folders of inputs. Needs no libFuzzer.
#include "harness.h"

#include <algorithm>
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

void replay(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
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
    for (int i = 1; i < argc; ++i) {
        for (const std::filesystem::path &input : inputs_in(argv[i])) {
            // Printed first, so that the name of an input that ends the process is the last line.
            std::fprintf(stderr, "%s\n", input.filename().c_str());
            replay(input);
            ++replayed;
        }
    }
    std::fprintf(stderr, "%zu inputs\n", replayed);
    // Without inputs nothing was checked, so that is a failure.
    return replayed > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
