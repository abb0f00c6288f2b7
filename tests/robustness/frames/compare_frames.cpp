// SPDX-License-Identifier: MIT
// zelvo-compare-frames: runs one golden case and compares every frame with the expected one byte by byte. It
// needs no library, so that it can be built by every compiler and for every processor.
#include "main_68k/start_up.h"
#include "platform/offscreen/input_script.h"
#include "settings/environment_map.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

/// The expected frames of all passes, one binary PGM after another.
struct Comparison {
    std::string expected;
    std::size_t at = 0;
    int passes = 0;
    int compared = 0;
};
Comparison comparison;

std::string whole_file(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void compare(const offscreen::Picture &frame) {
    const std::string pgm = "P5\n" + std::to_string(frame.width) + " " + std::to_string(frame.height) +
                            "\n255\n" + std::string(frame.pixels.begin(), frame.pixels.end());
    if (comparison.expected.compare(comparison.at, pgm.size(), pgm) != 0) {
        std::fprintf(stderr, "pass %d differs\n", frame.pass);
        std::_Exit(EXIT_FAILURE);
    }
    comparison.at += pgm.size();
    ++comparison.compared;
}

/// Called at the end of the process, because the program ends the process.
void require_all() {
    if (comparison.compared != comparison.passes || comparison.at != comparison.expected.size()) {
        std::fprintf(stderr, "%d of %d frames compared\n", comparison.compared, comparison.passes);
        std::_Exit(EXIT_FAILURE);
    }
    std::fprintf(stderr, "%d\n", comparison.compared);
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 7) {
        std::fprintf(stderr, "usage: %s GOLDEN-FOLDER FRAMES OBJECT SCRIPT SIZE PASSES\n", argv[0]);
        return 2;
    }
    const std::string golden = argv[1];
    offscreen::Setup setup;
    unsigned width = 0;
    unsigned height = 0;
    std::ifstream script(golden + "/scripts/" + argv[4] + ".txt");
    if (std::sscanf(argv[5], "%ux%u", &width, &height) != 2 || offscreen::read_script(script, setup)) {
        std::fputs("not a case\n", stderr);
        return 2;
    }
    comparison.expected = whole_file(argv[2]);
    comparison.passes = std::atoi(argv[6]);
    setup.command_line = {golden + "/objects/" + argv[3] + ".lwo"};
    setup.stand_ins[default_envmap_filename] = golden + "/envmap.chunky";
    setup.default_mode = {0, width, height};
    setup.last_pass = comparison.passes;
    setup.on_frame = compare;
    if (std::freopen("/dev/null", "w", stdout) == nullptr) {
        return EXIT_FAILURE;
    }
    offscreen::set_up(std::move(setup));
    std::atexit(require_all);
    start_up(2);
}
