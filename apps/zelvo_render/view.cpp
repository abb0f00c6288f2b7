// SPDX-License-Identifier: MIT
// Reads the options of a view and turns them into settings and an event.
#include "view.h"

#include "pipeline/rotation.h"

#include <CLI/CLI.hpp>
#include <array>
#include <charconv>
#include <limits>
#include <numbers>
#include <span>
#include <vector>

namespace {

constexpr std::array<const char *, 7> mode_names{"effect", "envmap",  "texturemap", "lightsourced",
                                                 "phong",  "z-light", "dots"};
constexpr std::array<const char *, 4> clear_names{"clear", "fade", "blur", "rise"};

/// The range of the keys.
constexpr double fastest_spin = 4.0;
constexpr double lowest_gamma = 0.02;
constexpr double highest_gamma = 3.0;
/// The range of one mouse movement.
constexpr double lowest_move = std::numeric_limits<WORD>::min();
constexpr double highest_move = std::numeric_limits<WORD>::max();

constexpr int longest_turntable = 1'000'000;

/// A movement in pass 1 is drawn in pass 2 and shown in pass 3.
constexpr int first_pass_of_the_view = 3;

/// A blur or a fade erases a frame completely in fewer passes than this.
constexpr int passes_of_a_trail = 64;

/// The index of a name in the list; its number may be given instead.
std::int32_t choice(const std::string &text, std::span<const char *const> names) {
    std::string all;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (text == names[i] || text == std::to_string(i)) {
            return static_cast<std::int32_t>(i);
        }
        all += names[i] + std::string(", ");
    }
    throw CLI::ValidationError("not one of " + all + "0 to " + std::to_string(names.size() - 1) + ": " +
                               text);
}

/// Reads `count` numbers separated by commas, each within the bounds.
template <typename Number>
std::vector<Number> numbers(const std::string &text, std::size_t count, double lowest, double highest,
                            const std::string &what) {
    std::vector<Number> found(count);
    const char *at = text.data();
    const char *end = at + text.size();
    bool is_wrong = false;
    for (Number &number : found) {
        const bool is_separated = &number == &found.front() || (at != end && *at++ == ',');
        const auto [next, error] = std::from_chars(at, end, number);
        is_wrong =
            is_wrong || !is_separated || error != std::errc{} || !(number >= lowest && number <= highest);
        at = next;
    }
    if (is_wrong || at != end) {
        throw CLI::ValidationError("not " + what + ": " + text);
    }
    return found;
}

offscreen::Event movement(std::int32_t x, std::int32_t y) {
    IntuiMessage message{};
    message.Class = IDCMP_MOUSEMOVE;
    message.MouseX = static_cast<WORD>(x);
    message.MouseY = static_cast<WORD>(y);
    return {1, message};
}

} // namespace

void add_view_options(CLI::App &app, View &view) {
    app.add_option("--mode")
        ->each([&view](const std::string &text) { view.mode = choice(text, mode_names); })
        ->type_name("NAME")
        ->description(
            "effect, envmap, texturemap, lightsourced, phong, z-light, dots, or 0 to 6: right button "
            "and \"e\", or \"obj style\" (envmap)")
        ->group(view_group);
    CLI::Option *spin = app.add_flag("--spin{2.0}");
    spin->each([&view](const std::string &text) {
            view.spin = numbers<double>(text, 1, -fastest_spin, fastest_spin, "from -4 to 4")[0];
        })
        ->description("or --spin=SPEED, -4 to 4: cursor right and left, or \"rotate\" (0; 2 without SPEED)")
        ->group(view_group);
    app.add_option("--tilt")
        ->each([&view](const std::string &text) {
            const auto counts = numbers<std::int32_t>(text, 2, lowest_move, highest_move,
                                                      "X,Y with two numbers from -32768 to 32767");
            view.tilt = movement(counts[0], counts[1]);
        })
        ->type_name("X,Y")
        ->description("In counts of the mouse, 80 to the radian: mouse movement in pass 1 (0,0)")
        ->group(view_group);
    app.add_option("--clear")
        ->each([&view](const std::string &text) { view.clear_style = choice(text, clear_names); })
        ->type_name("STYLE")
        ->description("clear, fade, blur, rise, or 0 to 3: \"b\", or \"clear style\" (clear)")
        ->group(view_group);
    app.add_flag("--dots", view.dots, "Dots over the faces: \"p\", or \"dots\"")->group(view_group);
    app.add_option("--gamma")
        ->each([&view](const std::string &text) {
            const auto gammas = numbers<double>(text, 3, lowest_gamma, highest_gamma,
                                                "R,G,B with three numbers from 0.02 to 3");
            view.gammas = Gammas{gammas[0], gammas[1], gammas[2]};
        })
        ->type_name("R,G,B")
        ->description("0.02 to 3 each: \"1\" to \"6\", or \"gammas\" (1,1,1)")
        ->group(view_group);
    app.add_option("--turntable", view.turntable,
                   "Pictures of one full turn, which repeats without a seam: \"rotate\"")
        ->check(CLI::Range(1, longest_turntable))
        ->excludes(spin)
        ->group(view_group);
}

int first_turntable_pass(const View &view) {
    // The first picture already has trails as long as the last one.
    const bool has_trails = view.clear_style.value_or(0) != 0;
    const int turns_before = has_trails ? (passes_of_a_trail + view.turntable - 1) / view.turntable : 0;
    return first_pass_of_the_view + turns_before * view.turntable;
}

int last_turntable_pass(const View &view) {
    return first_turntable_pass(view) + view.turntable - 1;
}

void apply_view(const View &view, offscreen::Setup &setup) {
    viewer.obj_style = view.mode.value_or(viewer.obj_style);
    viewer.rotate = view.spin.value_or(viewer.rotate);
    viewer.clear_style = view.clear_style.value_or(viewer.clear_style);
    viewer.dots = view.dots ? 1 : viewer.dots;
    viewer.gammas = view.gammas.value_or(viewer.gammas);
    if (view.turntable != 0) {
        viewer.rotate = 2.0 * std::numbers::pi / radians_per_spin / view.turntable;
    }
    if (view.tilt) {
        setup.events.push_front(*view.tilt);
    }
}
