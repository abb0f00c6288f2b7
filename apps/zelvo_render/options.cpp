// SPDX-License-Identifier: MIT
// Parses and checks the command line with CLI11.
#include "options.h"

#include "main_68k/version.h"
#include "picture_name.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdlib>
#include <regex>

namespace {

/// A requester holds any 32-bit number, however little a screen could do with it.
ULONG size_number(const std::string &digits) {
    try {
        return static_cast<ULONG>(std::stoi(digits));
    } catch (const std::out_of_range &) {
        throw CLI::ValidationError("--size", "out of range: " + digits);
    }
}

void parse_size(const std::string &text, offscreen::ModeAnswer &mode) {
    std::smatch sides;
    if (!std::regex_match(text, sides, std::regex("(-?[0-9]+)x(-?[0-9]+)"))) {
        throw CLI::ValidationError("--size", "not WIDTHxHEIGHT: " + text);
    }
    mode.width = size_number(sides[1]);
    mode.height = size_number(sides[2]);
}

ULONG ticks_of(double seconds) {
    constexpr double ticks_per_second = 65536.0;
    if (!(seconds >= 0.0 && seconds < ticks_per_second)) {
        throw CLI::ValidationError("--tick", "not between 0 and 65536 seconds");
    }
    return static_cast<ULONG>(std::lround(seconds * ticks_per_second));
}

/// A pattern that names one file cannot take several pictures.
void check_picture_names(const Options &options) {
    const bool several = options.passes - options.from >= options.every;
    if (options.png_pattern && !is_picture_pattern(*options.png_pattern) &&
        (several || !is_plain_name(*options.png_pattern))) {
        throw CLI::ValidationError("--png",
                                   "needs one number such as %05d for the pass: " + *options.png_pattern);
    }
}

/// `zelvo-render 0.67 OS4 (23-Feb-2005)`, from the program's version tag.
std::string version_text() {
    const std::string tag = version_tag;
    return "zelvo-render" + tag.substr(tag.find("Zelvo") + 5);
}

} // namespace

Options parse_options(int argc, char **argv) {
    Options options;
    std::string size;
    std::string clock = "fixed";
    std::optional<double> tick;
    std::int64_t mode_id = 0;

    CLI::App app{"Runs the viewer on an object with no screen and turns what it shows into pictures."};
    app.set_version_flag("--version", version_text());
    app.add_option(
        "OBJECT", options.program_words,
        "LightWave object file (IFF form LWOB); without it the viewer asks with its file requester");
    app.add_option("--envmap", options.envmap, "File that stands for \"Zelvo_envmap.chunky\"");
    app.add_option("--size", size, "WIDTHxHEIGHT that the screen-mode requester answers (320x256)");
    app.add_option("--mode-id", mode_id, "Display mode that the screen-mode requester answers (0)")
        ->check(CLI::Range(std::int64_t{INT32_MIN}, std::int64_t{UINT32_MAX}));
    app.add_option("--env", options.env_folder, "Folder behind ENV: (an empty temporary one)");
    app.add_option("--envarc", options.envarc_folder, "Folder behind ENVARC: (an empty temporary one)");
    app.add_option("--passes", options.passes, "Passes of the frame loop before Esc (1)")
        ->check(CLI::PositiveNumber);
    app.add_option("--input", options.input, "Script of events and requester answers");
    app.add_option("--chunky", options.chunky_folder, "Folder for one PGM a pass, as written to the screen");
    app.add_option("--png", options.png_pattern, "PNG a pass, texts included, such as frame-%05d.png");
    app.add_option("--gif", options.gif, "Endless animation of the same pictures, 50 a second");
    app.add_option("--sheet", options.sheet, "PNG of the same pictures side by side");
    app.add_option("--columns", options.sheet_columns, "Pictures in a row of the sheet (4)")
        ->check(CLI::PositiveNumber);
    app.add_option("--from", options.from, "First pass that becomes a picture (1)")
        ->check(CLI::PositiveNumber);
    app.add_option("--every", options.every, "Take every Nth pass from there (1)")
        ->check(CLI::PositiveNumber);
    app.add_option("--clock", clock, "fixed or real")->check(CLI::IsMember({"fixed", "real"}));
    app.add_option("--tick", tick, "Seconds that each reading of the fixed clock adds (1/256)");

    try {
        app.parse(argc, argv);
        if (!size.empty()) {
            parse_size(size, options.mode);
        }
        if (tick) {
            options.tick = ticks_of(*tick);
        }
        check_picture_names(options);
    } catch (const CLI::ParseError &error) {
        std::exit(app.exit(error) == 0 ? 0 : exit_misuse);
    }
    options.mode.mode_id = static_cast<ULONG>(mode_id);
    if (clock == "real") {
        options.tick.reset();
    }
    return options;
}
