// SPDX-License-Identifier: MIT
// Replaces the process by a new one of the same program: the program's state is that of the process, and so a
// start is the only way to begin anew.
#include "next_run.h"

#include "platform/window/recording.h"
#include "platform/window/windowed_host.h"
#include "settings/environment_map.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {

/// This run's own set-up. Written by prepare_next_run.
sdl::Setup this_run;

/// The command line of a run with the same files, in the screen that is open now, on the next object.
std::vector<std::string> next_words() {
    std::vector<std::string> words{"zelvo"};
    if (this_run.env_folder) {
        words.push_back("--env=" + *this_run.env_folder);
    }
    if (this_run.envarc_folder) {
        words.push_back("--envarc=" + *this_run.envarc_folder);
    }
    if (this_run.stand_ins.contains(default_envmap_filename)) {
        words.push_back("--envmap=" + this_run.stand_ins[default_envmap_filename]);
    }
    const host::ChosenScreen screen = host::last_screen();
    const std::uint32_t mode = screen.mode_id.value_or(0);
    words.push_back(mode == 0 ? "--fullscreen" : "--window=" + std::to_string(mode));
    words.push_back("--size=" + std::to_string(screen.width.value_or(0)) + "x" +
                    std::to_string(screen.height.value_or(0)));
    if (!this_run.recording.empty()) {
        words.push_back("--record=" + host::next_recording(this_run.recording));
    }
    words.insert(words.end(), {"--", host::next_object});
    return words;
}

void start_next_run() {
    std::vector<std::string> words = next_words();
    std::vector<char *> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string &word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    sdl::leave_window();
    std::fflush(nullptr);
    execv("/proc/self/exe", arguments.data());
    std::fprintf(stderr, "zelvo: cannot start again: %s\n", std::strerror(errno));
}

} // namespace

void prepare_next_run(const sdl::Setup &setup) {
    this_run = setup;
}

void start_next_run_at_end() {
    if (!host::next_object.empty()) {
        std::atexit(start_next_run);
    }
}
