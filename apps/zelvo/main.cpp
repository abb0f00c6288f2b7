// SPDX-License-Identifier: MIT
// zelvo: the viewer on the desktop.
#include "command_line.h"
#include "main_68k/start_up.h"
#include "platform/posix/standard_streams.h"
#include "platform/sdl/host.h"
#include "platform/window/windowed_host.h"
#include "settings/environment_map.h"

#include <csignal>

int main(int argc, char **argv) {
    host::open_missing_standard_streams();
    sdl::set_up({program_words(argc, argv), {default_envmap_filename}});
    std::signal(SIGINT, [](int) { host::request_quit(); });
    std::signal(SIGTERM, [](int) { host::request_quit(); });
    start_up(argc);
}
