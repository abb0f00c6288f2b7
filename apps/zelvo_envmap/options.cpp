// SPDX-License-Identifier: MIT
// Parses and checks the command line with CLI11.
#include "options.h"

#include "main_68k/version.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdlib>

namespace envmap {

Options parse_options(int argc, char **argv) {
    constexpr int exit_misuse = 2;
    Options options;
    bool is_panorama = false;
    bool is_ball = false;
    CLI::App app{"Makes a texture for the viewer from a picture, or a picture from a texture."};
    app.set_version_flag("--version", shown_version);
    app.add_option("PICTURE", options.input, "Picture of any format that OpenImageIO reads")->required();
    app.add_option("OUTPUT", options.output, "Texture to write, usually *.chunky")->required();
    CLI::Option *panorama =
        app.add_flag("--panorama", is_panorama, "The picture shows all directions, twice as wide as high");
    CLI::Option *ball = app.add_flag("--ball", is_ball, "The picture is a photograph of a chrome ball");
    CLI::Option *turn =
        app.add_option("--turn", options.turn, "Degrees to turn the panorama to the right (0)");
    CLI::Option *exposure =
        app.add_option("--exposure", options.exposure, "Double the light this many times (0)")
            ->check(CLI::Range(-20.0, 20.0));
    CLI::Option *contrast =
        app.add_option("--contrast", options.contrast, "Multiply the distance from middle grey by this (1)")
            ->check(CLI::Range(0.0, 100.0));
    CLI::Option *soft =
        app.add_option("--blur", options.blur, "Blur by this many texels (0)")->check(CLI::Range(0.0, 64.0));
    CLI::Option *preview =
        app.add_option("--preview", options.preview, "PNG of a sphere that reflects the texture");
    CLI::Option *to_png =
        app.add_flag("--to-png", options.makes_png, "The other way: PICTURE is a texture, OUTPUT a PNG");
    panorama->excludes(ball);
    turn->needs(panorama);
    to_png->excludes(panorama)
        ->excludes(ball)
        ->excludes(exposure)
        ->excludes(contrast)
        ->excludes(soft)
        ->excludes(preview);
    try {
        app.parse(argc, argv);
        // Ranges let NaN pass.
        for (const double number : {options.turn, options.exposure, options.contrast, options.blur}) {
            if (!std::isfinite(number)) {
                throw CLI::ValidationError("a number is infinite or NaN");
            }
        }
    } catch (const CLI::ParseError &error) {
        std::exit(app.exit(error) == 0 ? 0 : exit_misuse);
    }
    options.kind = is_panorama ? Kind::panorama : is_ball ? Kind::ball : Kind::photograph;
    return options;
}

} // namespace envmap
