// SPDX-License-Identifier: MIT
// zelvo: the viewer on the desktop.
#include "command_line.h"
#include "main_68k/frame_loop.h"
#include "main_68k/start_up.h"
#include "next_run.h"
#include "platform/posix/standard_streams.h"
#include "platform/sdl/host.h"
#include "platform/sdl/unseen_output.h"
#include "platform/window/windowed_host.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

namespace {

/// Whether a signal asked for the end, after which no other run begins. Written by signal handlers.
volatile std::sig_atomic_t is_terminated = 0;

void terminate(int) {
    is_terminated = 1;
    host::request_quit();
}

} // namespace

int main(int argc, char **argv) {
    host::open_missing_standard_streams();
    const sdl::Setup setup = parse_command_line(argc, argv);
    prepare_next_run(setup);
    sdl::set_up(setup);
    if (!setup.recording.empty() && !sdl::record_run(setup.recording)) {
        std::fprintf(stderr, "zelvo: cannot write %s: %s\n", setup.recording.c_str(), std::strerror(errno));
        return exit_misuse;
    }
    std::signal(SIGINT, terminate);
    std::signal(SIGTERM, terminate);
    host::watch_unseen_output();
    begin_run(argc);
    while (!run_pass()) {
    }
    host::note_good_end();
    if (is_terminated == 0) {
        start_next_run_at_end();
    }
    end_run();
}
