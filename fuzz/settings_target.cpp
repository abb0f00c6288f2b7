// SPDX-License-Identifier: MIT
// Fuzz target: loads any bytes as a settings file, builds the palette and the texts, saves and loads again,
// and draws.
#include "harness.h"

#include "core/fatal_exit.h"
#include "display/overlay_text.h"
#include "display/palette.h"
#include "display/presentation.h"
#include "display/screen.h"
#include "main_68k/viewer_state.h"
#include "pipeline/preparation.h"
#include "pipeline/render_frame.h"
#include "platform/offscreen/host.h"
#include "raster/dots.h"
#include "raster/texture_map.h"
#include "settings/settings_file.h"
#include "support/model_builder.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>

namespace {

constexpr int small_width = 53;
constexpr int small_height = 41;

/// Two triangles with a common edge.
void make_object() {
    set_model({{-1.0F, -1.0F, 0.0F}, {1.0F, -1.0F, 0.3F}, {1.0F, 1.0F, 0.0F}, {-1.0F, 1.0F, -0.3F}},
              {3, 0, 1, 2, 1, 3, 0, 2, 3, 1});
    allocate_envmap();
    allocate_dot_image();
}

/// Draws two frames and their texts with the loaded settings; the second may be made from the first.
void draw_with_settings() {
    for (int pass = 0; pass < 2; ++pass) {
        render_frame();
        swap_frame_buffers();
        viewer.spin_angle += viewer.rotate;
    }
    show_previous_frame();
    draw_message_line(1.0 / 64.0);
    draw_frame_rate(1.0 / 64.0);
}

/// Checks that loading a saved file restores the settings to six decimals: saving again gives the same bytes.
/// Names with a blank are skipped, because loading cuts them there.
void require_stable_saving() {
    save_vars(session_settings);
    const std::string saved = fuzz::files.at(session_settings);
    const std::string name(viewer.envmap_filename.data());
    const bool is_one_word = !name.empty() && std::none_of(name.begin(), name.end(), [](unsigned char c) {
        return c == ' ' || (c >= '\t' && c <= '\r');
    });
    load_vars(session_settings);
    save_vars(session_settings);
    fuzz::require(!is_one_word || fuzz::files.at(session_settings) == saved,
                  "settings that were saved and loaded save to the same bytes");
}

/// The part of start-up that uses the settings.
void open_display_as_set() {
    load_vars(session_settings);
    make_object();
    open_display();
    prepare_object();
    show_previous_frame();
    render_frame();
    fatal_exit();
}

/// The action of the key that loads settings, which keeps the open display.
void use_settings_by_key() {
    viewer.width = small_width;
    viewer.height = small_height;
    make_object();
    open_display();
    prepare_object();
    fuzz::require(load_vars(session_settings) == 1, "a settings file that is there is read");
    build_palette();
    draw_with_settings();
    require_stable_saving();
    close_display();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::silence_output();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string settings(data, data + size);
    // Opens a display of the loaded size if possible. This is the most costly step, so only some inputs do
    // it.
    constexpr std::size_t one_in = 64;
    if (is_thorough || std::hash<std::string>{}(settings) % one_in == 0) {
        fuzz::files = {{session_settings, settings}};
        const fuzz::Ending ending = fuzz::run({}, open_display_as_set);
        fuzz::require(ending.exit_code == 0 || ending.exit_code == 20, "the display opens or is refused");
        fuzz::require(offscreen::held().empty(), "a closed display holds nothing");
    }
    fuzz::files = {{session_settings, settings}};
    fuzz::run({}, use_settings_by_key);
    return 0;
}
