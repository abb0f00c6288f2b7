// SPDX-License-Identifier: MIT
// Parses and checks the command line with CLI11.
#include "options.h"

#include "failure.h"
#include "main_68k/version.h"
#include "picture_name.h"
#include "platform/offscreen/input_script.h"
#include "platform/shared/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

namespace {

/// A requester can hold any 32-bit number, even sizes that no screen can have.
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

/// The options that choose what a settings file holds too.
constexpr std::array<const char *, 6> view_settings{"--mode", "--spin",  "--clear",
                                                    "--dots", "--gamma", "--turntable"};

/// The first of them on the command line, empty if there is none.
std::string view_settings_given(const CLI::App &app) {
    const auto given =
        std::ranges::find_if(view_settings, [&app](const char *option) { return app.count(option) != 0; });
    return given == view_settings.end() ? "" : *given;
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

/// One pass sets a view, the next draws it, and the third is the first whose picture shows all of it.
constexpr int pass_of_a_view = 3;

/// Sets how long a run is and which of its passes become pictures, unless the user did.
void choose_passes(const CLI::App &app, Options &options) {
    if (options.view.turntable != 0) {
        options.from = first_turntable_pass(options.view);
        options.passes = last_turntable_pass(options.view);
        return;
    }
    const std::vector<const CLI::Option *> view_options = app.get_options(
        [](const CLI::Option *option) { return option->get_group() == view_group && option->count() > 0; });
    if (!view_options.empty() && app.count("--passes") == 0 && app.count("--from") == 0) {
        options.passes = options.from = pass_of_a_view;
    }
}

/// Reads the input script, whose object and passes are those of the run unless the command line says
/// otherwise.
void take_script(const CLI::App &app, const std::string &path, Options &options) {
    std::ifstream script(path);
    // A folder opens like a file and only then cannot be read.
    if (!script || std::filesystem::is_directory(path)) {
        fail("cannot read " + path);
    }
    if (const auto error = offscreen::read_script(script, options.script)) {
        fail(path + ":" + std::to_string(error->line) + ": " + error->message);
    }
    if (options.program_words.empty()) {
        options.program_words = options.script.command_line;
    }
    if (app.count("--passes") != 0) {
        options.script.recorded_frames.reset();
    } else if (options.script.last_pass != 0) {
        options.passes = options.script.last_pass;
    }
    if (!options.script.settings.empty() && !view_settings_given(app).empty()) {
        throw CLI::ExcludesError(path + " with settings", view_settings_given(app));
    }
}

/// The options of one run per object. The object's name goes into the names of its outputs.
std::vector<Options> runs_of(const Options &options) {
    // The program's own command line may also have a keyword before the object's name.
    const std::optional<std::string> only = host::file_argument(options.program_words);
    const std::vector<std::string> objects = only ? std::vector{*only} : options.program_words;
    if (objects.empty()) {
        return {options};
    }
    std::set<std::string> names;
    std::vector<Options> runs;
    for (const std::string &object : objects) {
        const std::string name = std::filesystem::path(object).stem().string();
        Options run = options;
        run.program_words = only ? options.program_words : std::vector{object};
        run.has_progress = objects.size() == 1;
        bool has_outputs = false;
        const auto give_name = [&](const char *option, std::optional<std::string> &output,
                                   const std::string &own_name) {
            if (output && objects.size() > 1 && !has_object_name(*output)) {
                throw CLI::ValidationError(option, "needs %s for the object's name: " + *output);
            }
            has_outputs = has_outputs || output;
            output = output ? std::optional(with_object_name(*output, own_name)) : std::nullopt;
        };
        give_name("--chunky", run.chunky_folder, name);
        give_name("--png", run.png_pattern, escaped(name));
        give_name("--gif", run.gif, name);
        give_name("--sheet", run.sheet, name);
        give_name("--y4m", run.video, name);
        if (!names.insert(name).second && has_outputs) {
            throw CLI::ValidationError("OBJECT", "two have the name " + name);
        }
        runs.push_back(std::move(run));
    }
    return runs;
}

/// `zelvo-render 0.67 OS4 (23-Feb-2005)`, from the program's version tag.
std::string version_text() {
    const std::string tag = version_tag;
    return "zelvo-render" + tag.substr(tag.find("Zelvo") + 5);
}

} // namespace

std::vector<Options> parse_options(int argc, char **argv) {
    Options options;
    std::vector<Options> runs;
    std::string size;
    std::optional<std::string> input;
    std::string background = "black";
    std::string clock = "fixed";
    std::optional<double> tick;
    std::int64_t mode_id = 0;

    CLI::App app{"Runs the viewer on an object with no screen and turns what it shows into pictures."};
    app.set_version_flag("--version", version_text());
    app.add_option("OBJECT", options.program_words,
                   "LightWave object files (IFF form LWOB), each drawn in its own run; without one the "
                   "viewer asks with "
                   "its file requester");
    app.add_option("--envmap", options.envmap, "File to open instead of \"Zelvo_envmap.chunky\"");
    app.add_option("--size", size, "WIDTHxHEIGHT that the screen-mode requester answers (320x256)");
    app.add_option("--mode-id", mode_id, "Display mode that the screen-mode requester answers (0)")
        ->check(CLI::Range(std::int64_t{INT32_MIN}, std::int64_t{UINT32_MAX}));
    CLI::Option *env = app.add_option("--env", options.env_folder, "Folder of ENV: (an empty temporary one)");
    app.add_option("--envarc", options.envarc_folder, "Folder of ENVARC: (an empty temporary one)");
    CLI::Option *passes =
        app.add_option("--passes", options.passes, "Passes of the frame loop before Esc (1; 3 for a view)")
            ->check(CLI::PositiveNumber);
    app.add_option("--input", input, "Script of events and requester answers, or a run that zelvo recorded");
    app.add_option("--chunky", options.chunky_folder,
                   "Folder for one PGM per pass, as written to the screen");
    CLI::Option *png =
        app.add_option("--png", options.png_pattern, "One PNG per pass, with texts, such as frame-%05d.png");
    app.add_option("--gif", options.gif, "Endless animation of the same pictures, 50 per second");
    app.add_option("--sheet", options.sheet, "PNG of the same pictures side by side");
    app.add_option("--y4m", options.video,
                   "Video of the same pictures for an encoder, 50 per second; - for standard output");
    app.add_option("--columns", options.sheet_columns, "Pictures in a row of the sheet (4)")
        ->check(CLI::PositiveNumber);
    CLI::Option *from =
        app.add_option("--from", options.from, "First pass that becomes a picture (1; 3 for a view)")
            ->check(CLI::PositiveNumber);
    CLI::Option *every = app.add_option("--every", options.every, "Take every Nth pass from there (1)")
                             ->check(CLI::PositiveNumber);
    app.add_option("--clock", clock, "fixed or real")->check(CLI::IsMember({"fixed", "real"}));
    app.add_option("--tick", tick, "Seconds that each reading of the fixed clock adds (1/256)");
    app.footer(
        "In names of outputs %s is replaced by the object's name without folder and suffix; several objects "
        "need it.");
    add_view_options(app, options.view);
    app.add_flag("!--no-texts", options.has_texts,
                 "Pictures without texts: \"f\", or \"fps\", and two seconds without a message")
        ->group(view_group);
    app.add_option("--background", background, "black or transparent, which needs --png")
        ->check(CLI::IsMember({"black", "transparent"}))
        ->group(view_group);
    // Settings come either from the folder or from the options, not from both.
    for (const char *option : view_settings) {
        app.get_option(option)->excludes(env);
    }
    app.get_option("--turntable")->excludes(passes)->excludes(from)->excludes(every);

    try {
        app.parse(argc, argv);
        if (!size.empty()) {
            parse_size(size, options.mode);
        }
        if (tick) {
            options.tick = ticks_of(*tick);
        }
        if (options.view.turntable != 0 && options.view.mode == mode_effect) {
            throw CLI::ValidationError("--turntable", "the effect changes with every turn");
        }
        options.is_transparent = background == "transparent";
        if (options.is_transparent && png->count() == 0) {
            throw CLI::RequiresError("--background transparent", "--png");
        }
        if (input) {
            take_script(app, *input, options);
        }
        choose_passes(app, options);
        options.mode.mode_id = static_cast<ULONG>(mode_id);
        if (clock == "real") {
            options.tick.reset();
        }
        runs = runs_of(options);
        for (const Options &run : runs) {
            check_picture_names(run);
        }
    } catch (const CLI::ParseError &error) {
        std::exit(app.exit(error) == 0 ? 0 : exit_misuse);
    }
    return runs;
}
