// SPDX-License-Identifier: MIT
// zelvo: the viewer on the desktop.
#include "main_68k/start_up.h"
#include "main_68k/version.h"
#include "main_68k/viewer_state.h"
#include "platform/sdl/host.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr char help_text[] =
    "Usage: zelvo [OBJECT]\n"
    "\n"
    "Turns an object before your eyes. OBJECT is a LightWave object file (IFF form LWOB);\n"
    "without it a requester asks for one. The cursor keys steer, Esc quits; the README\n"
    "tells all keys.\n"
    "\n"
    "  -h, --help     print this help and exit\n"
    "  --version      print the version and exit\n"
    "  ?              print the template of the command line and exit\n";

/// The version tag without its marker.
std::string version_text() {
    const std::string tag = version_tag;
    return tag.substr(tag.find("Zelvo"));
}

/// Answers what the shell's user asks about the program itself and ends it; any other words are for the
/// program.
std::vector<std::string> program_words(int argc, char **argv) {
    CLI::App app;
    app.formatter_fn([](const CLI::App *, const std::string &, CLI::AppFormatMode) { return help_text; });
    app.set_version_flag("--version", version_text());
    app.prefix_command();
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        std::exit(app.exit(error));
    }
    return app.remaining();
}

} // namespace

int main(int argc, char **argv) {
    std::vector<std::string> words = program_words(argc, argv);
    if (words == std::vector<std::string>{"?"}) {
        std::puts("FILE/A: the LightWave object to view");
        return EXIT_SUCCESS;
    }
    desktop::set_up({std::move(words), {default_envmap_filename}});
    std::signal(SIGINT, [](int) { desktop::request_quit(); });
    std::signal(SIGTERM, [](int) { desktop::request_quit(); });
    start_up(argc);
}
