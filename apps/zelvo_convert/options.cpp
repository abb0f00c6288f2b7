// SPDX-License-Identifier: MIT
// Parses and checks the command line with CLI11.
#include "options.h"

#include "main_68k/version.h"

#include <CLI/CLI.hpp>
#include <cstdlib>

namespace convert {

namespace {

constexpr int exit_misuse = 2;
constexpr int largest_number = 1'000'000'000;

} // namespace

Options parse_options(int argc, char **argv) {
    Options options;
    std::string up;
    CLI::App app{
        "Converts models of many formats to LightWave objects (IFF form LWOB), which the viewer shows."};
    app.set_version_flag("--version", shown_version);
    app.add_option("INPUT", options.inputs, "Models: OBJ, STL, PLY, glTF, 3DS, Collada, FBX, LWO2, ...")
        ->required();
    CLI::Option *output =
        app.add_option("-o,--output", options.output, "Object file to write, for one input; - prints it");
    CLI::Option *folder =
        app.add_option("-d,--folder", options.folder, "Folder for the objects (that of each input)");
    app.add_option("--up", up, "Axis that points up: Y or Z (that of the format)")
        ->check(CLI::IsMember({"Y", "Z"}, CLI::ignore_case));
    app.add_flag("--flip", options.wishes.is_flipped, "Turn all polygons inside out");
    app.add_flag("--triangles", options.wishes.has_only_triangles, "Cut all polygons into triangles");
    app.add_option("--points", options.wishes.most_points, "Reduce to at most this many points (65535)")
        ->check(CLI::Range(std::size_t{3}, most_points_of_an_object));
    app.add_option("--polygons", options.wishes.most_polygons, "Reduce to at most this many polygons")
        ->check(CLI::Range(1, largest_number));
    CLI::Option *info =
        app.add_flag("--info", options.only_describes, "Describe the files and write nothing");
    CLI::Option *view = app.add_flag("--view", options.opens_viewer, "Open the viewer on the object");
    CLI::Option *cached =
        app.add_flag("--cached", options.uses_cache,
                     "Keep the object in the user's cache for the next time; print its path");
    app.add_option("--timeout", options.seconds, "Seconds that one input may take (120)")
        ->check(CLI::Range(1, largest_number));
    app.add_option("--memory", options.mebibytes, "MiB of memory that one input may take (2048)")
        ->check(CLI::Range(64, largest_number));
    output->excludes(folder);
    cached->excludes(folder)->excludes(info)->excludes(view);
    info->excludes(output)->excludes(folder)->excludes(view);
    try {
        app.parse(argc, argv);
        if (options.inputs.size() > 1 && options.output) {
            throw CLI::ValidationError("--output", "takes one input; --folder takes several");
        }
        if (options.inputs.size() > 1 && options.opens_viewer) {
            throw CLI::ValidationError("--view", "takes one input");
        }
        if (options.opens_viewer && options.output == "-") {
            throw CLI::ValidationError("--view", "needs a file");
        }
        if (options.uses_cache && options.output && options.output != "-") {
            throw CLI::ValidationError("--cached", "takes no output but -");
        }
    } catch (const CLI::ParseError &error) {
        std::exit(app.exit(error) == 0 ? 0 : exit_misuse);
    }
    if (!up.empty()) {
        options.wishes.up = up == "Z" || up == "z" ? Up::z : Up::y;
    }
    options.wishes.is_described = options.only_describes;
    return options;
}

} // namespace convert
