// SPDX-License-Identifier: MIT
// Settings and mouse movement that the command line chooses instead of an input script.
#pragma once

#include "main_68k/viewer_state.h"
#include "platform/offscreen/host.h"

#include <cstdint>
#include <optional>

namespace CLI {
class App;
}

/// How the object is shown. What is not chosen is as it is at every start.
struct View {
    std::optional<std::int32_t> mode;
    std::optional<double> spin;
    std::optional<std::int32_t> clear_style;
    bool dots = false;
    std::optional<Gammas> gammas;
    /// The mouse movement that arrives in pass 1 before all other events.
    std::optional<offscreen::Event> tilt;
    /// Pictures of one full turn; 0 for none.
    int turntable = 0;
};

/// The help's heading of the options that choose a view.
constexpr char view_group[] = "View (as by keys, or by the settings file)";

/// Adds the options that fill `view`, which must outlive the parsing.
void add_view_options(CLI::App &app, View &view);

/// The pass whose picture is the first of a turntable, and the one whose picture is the last.
int first_turntable_pass(const View &view);
int last_turntable_pass(const View &view);

/// Puts the view into the viewer's settings before a run starts, and its movement before all events.
void apply_view(const View &view, offscreen::Setup &setup);
