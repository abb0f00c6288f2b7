// SPDX-License-Identifier: MIT
// Settings and a mouse movement from the command line, as an alternative to an input script.
#pragma once

#include "main_68k/viewer_state.h"
#include "platform/offscreen/host.h"

#include <cstdint>
#include <optional>

namespace CLI {
class App;
}

/// How the object is shown. Whatever is not chosen has its default.
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

/// The heading in the help above the options that choose a view.
constexpr char view_group[] = "View (as by keys, or by the settings file)";

/// Adds the options that fill `view`, which must outlive the parsing.
void add_view_options(CLI::App &app, View &view);

/// The passes whose pictures are the first and the last of a turntable.
int first_turntable_pass(const View &view);
int last_turntable_pass(const View &view);

/// Sets the viewer's settings before a run starts, and adds the movement before all other events.
void apply_view(const View &view, offscreen::Setup &setup);
