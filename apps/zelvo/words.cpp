// SPDX-License-Identifier: MIT
// Parses the command line with CLI11.
#include "words.h"

#include "main_68k/version.h"

#include <CLI/CLI.hpp>
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

} // namespace

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
    std::vector<std::string> words = app.remaining();
    if (words == std::vector<std::string>{"?"}) {
        std::puts("FILE/A: the LightWave object to view");
        std::exit(EXIT_SUCCESS);
    }
    return words;
}
