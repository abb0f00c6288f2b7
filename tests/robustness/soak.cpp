// SPDX-License-Identifier: MIT
// zelvo-soak: runs the viewer for millions of passes with random keys, mouse movements, mode changes and
// texture changes, and fails if its memory grows.
#include "main_68k/start_up.h"
#include "main_68k/viewer_state.h"
#include "platform/offscreen/state.h"
#include "settings/environment_map.h"
#include "support/temporary_files.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <string>
#include <unistd.h>

namespace {

/// The command line.
struct Options {
    int passes = 1000000;
    std::uint32_t seed = 1;
    std::string object = std::string(ZELVO_TEST_FOLDER) + "/golden/objects/cube.lwo";
    std::string texture = std::string(ZELVO_TEST_FOLDER) + "/golden/envmap.chunky";
};

/// How far memory may vary from the level after the first tenth of the run.
constexpr long allowed_growth_kib = 1024;

long resident_kib() {
    long size = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

/// The state of the run: the random user, the memory, and counts for the report.
struct Soak {
    Options options;
    std::minstd_rand random;
    long lowest_kib = 0;
    long highest_kib = 0;
    int mode_changes = 0;
    int texture_changes = 0;
    int saves = 0;
    std::array<int, 8> passes_in_mode{};
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};
Soak soak;

unsigned below(unsigned bound) {
    return static_cast<unsigned>(soak.random() / 7 % bound);
}

IntuiMessage &add_event(int pass, ULONG event_class, UWORD code) {
    offscreen::Event event;
    event.pass = pass;
    event.message.Class = event_class;
    event.message.Code = code;
    return offscreen::state.setup.events.emplace_back(event).message;
}

void press(int pass, char character) {
    add_event(pass, IDCMP_VANILLAKEY, static_cast<unsigned char>(character));
}

/// Changes to a small display (16 x 12 to 79 x 60 pixels), on which a pass is quick.
void change_mode(int pass) {
    offscreen::state.setup.answers.push_back(
        {{}, offscreen::ModeAnswer{below(1000), 16 + below(64), 12 + below(49)}});
    press(pass, 'm');
    ++soak.mode_changes;
}

/// Chooses a texture. Sometimes the requester is cancelled, which reads the default texture.
void change_texture(int pass) {
    offscreen::Answer answer;
    if (below(4) != 0) {
        answer.file = offscreen::FileAnswer{below(2) == 0 ? "" : "drawer/", "texture"};
    }
    offscreen::state.setup.answers.push_back(answer);
    press(pass, 't');
    ++soak.texture_changes;
}

/// Adds the user's input for this pass: mostly nothing or a movement.
void act(int pass) {
    constexpr char keys[] = "0123456bcdfilprRwW?";
    const unsigned choice = below(2000);
    if (choice < 300) {
        IntuiMessage &message = add_event(pass, IDCMP_MOUSEMOVE, 0);
        message.MouseX = static_cast<WORD>(static_cast<int>(below(401)) - 200);
        message.MouseY = static_cast<WORD>(static_cast<int>(below(401)) - 200);
    } else if (choice < 500) {
        press(pass, keys[below(sizeof keys - 1)]);
    } else if (choice < 600) {
        add_event(pass, IDCMP_RAWKEY, static_cast<UWORD>(0x4B + below(6)));
    } else if (choice < 640) {
        add_event(pass, IDCMP_MOUSEBUTTONS, MENUDOWN);
    } else if (choice < 642) {
        press(pass, 'e');
    } else if (choice < 650) {
        change_mode(pass);
    } else if (choice < 660) {
        change_texture(pass);
    } else if (choice < 661 && below(20) == 0) {
        press(pass, below(2) == 0 ? 's' : 'S');
        ++soak.saves;
    }
}

/// Called in every pass with the frame that is shown.
void watch(const offscreen::Picture &frame) {
    const int passes = soak.options.passes;
    const auto mode = static_cast<std::uint32_t>(viewer.obj_style);
    ++soak.passes_in_mode[std::min(mode, 7U)];
    // The effect mode and a fast spin would take most of the time, so another mode follows soon.
    if (mode == mode_effect && below(8) == 0) {
        add_event(frame.pass, IDCMP_MOUSEBUTTONS, MENUDOWN);
    }
    act(frame.pass);
    const int interval = std::max(passes / 1000, 1);
    if (frame.pass < passes / 10 || frame.pass % interval != 0) {
        return;
    }
    const long now = resident_kib();
    soak.lowest_kib = soak.lowest_kib == 0 ? now : std::min(soak.lowest_kib, now);
    soak.highest_kib = std::max(soak.highest_kib, now);
}

/// Called at the end of the process, because the program ends the process.
void report() {
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - soak.start).count();
    std::fprintf(stderr, "%d passes in %.1f s, %d mode changes, %d texture changes, %d saves\n",
                 offscreen::current_pass(), seconds, soak.mode_changes, soak.texture_changes, soak.saves);
    std::fprintf(stderr, "passes by mode:");
    for (const int passes : soak.passes_in_mode) {
        std::fprintf(stderr, " %d", passes);
    }
    std::fprintf(stderr, "\nresident memory from the first tenth on: %ld to %ld KiB\n", soak.lowest_kib,
                 soak.highest_kib);
    std::fflush(nullptr);
    if (!offscreen::held().empty() || offscreen::current_pass() != soak.options.passes) {
        std::fputs("the program did not end as it should\n", stderr);
        std::_Exit(EXIT_FAILURE);
    }
    if (soak.highest_kib - soak.lowest_kib > allowed_growth_kib && !ZELVO_SOAK_IS_SANITIZED) {
        std::fputs("the memory is not constant\n", stderr);
        std::_Exit(EXIT_FAILURE);
    }
}

[[noreturn]] void misuse() {
    std::fputs("usage: zelvo-soak [--passes N] [--seed N] [--object FILE]\n", stderr);
    std::exit(2);
}

Options parse(int argc, char **argv) {
    Options options;
    for (int i = 1; i < argc; i += 2) {
        const std::string name = argv[i];
        if (i + 1 == argc) {
            misuse();
        }
        if (name == "--passes") {
            options.passes = std::max(std::atoi(argv[i + 1]), 1);
        } else if (name == "--seed") {
            options.seed = static_cast<std::uint32_t>(std::strtoul(argv[i + 1], nullptr, 10));
        } else if (name == "--object") {
            options.object = argv[i + 1];
        } else {
            misuse();
        }
    }
    return options;
}

} // namespace

int main(int argc, char **argv) {
    soak.options = parse(argc, argv);
    soak.random.seed(soak.options.seed);
    static const TemporaryFiles files;
    std::fprintf(stderr, "seed %u\n", soak.options.seed);
    if (std::freopen("/dev/null", "w", stdout) == nullptr) {
        return EXIT_FAILURE;
    }
    offscreen::Setup setup;
    setup.command_line = {soak.options.object};
    setup.volumes = {{"ENV", files.folder()}, {"ENVARC", files.folder()}};
    for (const char *name : {default_envmap_filename, "texture", "drawer/texture"}) {
        setup.stand_ins[name] = soak.options.texture;
    }
    setup.default_mode = {0, 53, 41};
    setup.last_pass = soak.options.passes;
    setup.on_frame = watch;
    offscreen::set_up(std::move(setup));
    std::atexit(report);
    start_up(2);
}
