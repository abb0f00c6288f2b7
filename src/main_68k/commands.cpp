// SPDX-License-Identifier: MIT
// One function per command of the keyboard and the mouse, each with its message.
#include "main_68k/commands.h"

#include "display/palette.h"
#include "main_68k/viewer_state.h"
#include "platform/key_codes.h"
#include "settings/environment_map.h"
#include "settings/settings_file.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace {

constexpr std::array<const char *, 7> mode_messages{
    "mode: effekt bazmeg :)",     "mode: envmap",  "mode: texturemap", "mode: lightsourced",
    "mode: fake (gouraud) phong", "mode: Z-light", "mode: dots",
};

constexpr double gamma_step = 0.1;
constexpr double lowest_gamma = 0.02;
constexpr double highest_gamma = 3.0;

constexpr double rotate_step = 0.1;
constexpr double fastest_rotate = 4.0;

/// The message shows a dot's luminance as a fraction of this.
constexpr double dot_lum_unit = 32768.0;

/// Step and upper limit of a dot luminance.
struct LuminanceRange {
    std::int32_t step;
    std::int32_t highest;
};
constexpr LuminanceRange cleared_range{1024, 131072};
constexpr LuminanceRange blurred_range{256, 32768};

void turn_object(WORD dx, WORD dy) {
    // The counts wrap instead of overflowing, however far the mouse moves.
    viewer.tilt_x = static_cast<std::int32_t>(static_cast<std::uint32_t>(viewer.tilt_x) +
                                              static_cast<std::uint32_t>(std::int32_t{dx}));
    viewer.tilt_y = static_cast<std::int32_t>(static_cast<std::uint32_t>(viewer.tilt_y) +
                                              static_cast<std::uint32_t>(std::int32_t{dy}));
}

/// Selects the next mode, and mode 1 after the last one. Mode 0, the effect, is never reached this way.
void select_next_mode() {
    viewer.obj_style = viewer.obj_style >= mode_dots ? mode_envmap : viewer.obj_style + 1;
    // A negative mode, which only an edited settings file can set, has no name.
    if (viewer.obj_style >= 0) {
        show_message("%s", mode_messages[static_cast<std::size_t>(viewer.obj_style)]);
    }
}

/// Changes the dot luminance that the clear style uses by one step up (+1) or down (-1).
void change_dot_luminance(int direction) {
    const bool is_cleared = viewer.clear_style == 0;
    std::int32_t &luminance = is_cleared ? viewer.dot_lum : viewer.dot_lum_in_blur;
    const LuminanceRange &range = is_cleared ? cleared_range : blurred_range;
    const std::int64_t changed = std::int64_t{luminance} + direction * range.step;
    luminance = static_cast<std::int32_t>(direction > 0 ? std::min<std::int64_t>(changed, range.highest)
                                                        : std::max<std::int64_t>(changed, 0));
    show_message("dotlum=%f", luminance / dot_lum_unit);
}

void change_rotate(int direction) {
    const double changed = viewer.rotate + direction * rotate_step;
    viewer.rotate = direction > 0 ? std::min(changed, fastest_rotate) : std::max(changed, -fastest_rotate);
    show_message("rotate=%1.1f", viewer.rotate);
}

void raise_gamma(double &gamma) {
    gamma = gamma + gamma_step > highest_gamma ? highest_gamma : gamma + gamma_step;
    build_palette();
}

void lower_gamma(double &gamma) {
    gamma = gamma - gamma_step < lowest_gamma ? lowest_gamma : gamma - gamma_step;
    build_palette();
}

/// Switches a flag from 0 to 1, and from any other value to 0.
void toggle(std::int32_t &flag, const char *on_message, const char *off_message) {
    flag = flag == 0 ? 1 : 0;
    show_message("%s", flag != 0 ? on_message : off_message);
}

void negate(Vec3 &v) {
    v = {-v.x, -v.y, -v.z};
}

void flip_polygons() {
    toggle(viewer.flip, "polygons flipped", "polygons flipped back");
    negate(viewer.light_base);
    negate(viewer.light_source);
    negate(viewer.light);
}

void select_next_clear_style() {
    viewer.clear_style = viewer.clear_style >= 3 ? 0 : viewer.clear_style + 1;
    show_message("blurmode: %d", viewer.clear_style);
}

/// Loads settings. The open display stays as it is until the next mode change.
void load_settings(const char *path, const char *message) {
    load_vars(path);
    build_palette();
    show_message("%s", message);
}

void handle_character(UWORD character, Requests &requests) {
    switch (character) {
    case escape_character:
    case 'q':
    case 'x':
        requests.quit = true;
        break;
    case '0':
        viewer.gammas = {1.0, 1.0, 1.0};
        build_palette();
        break;
    case '1':
        lower_gamma(viewer.gammas.red);
        break;
    case '2':
        lower_gamma(viewer.gammas.green);
        break;
    case '3':
        lower_gamma(viewer.gammas.blue);
        break;
    case '4':
        raise_gamma(viewer.gammas.red);
        break;
    case '5':
        raise_gamma(viewer.gammas.green);
        break;
    case '6':
        raise_gamma(viewer.gammas.blue);
        break;
    case 'b':
        select_next_clear_style();
        break;
    case 'c':
        toggle(viewer.internal_c2p_enabled, "internal c2p enabled", "system c2p enabled");
        break;
    case 'd':
        toggle(viewer.doubleside, "doubleside on", "doubleside off");
        break;
    case 'e':
        viewer.obj_style = mode_effect;
        show_message("hmm... little effect :)");
        break;
    case 'f':
        toggle(viewer.fps, "fps-counter enabled", "fps-counter disabled");
        break;
    case 'i':
        flip_polygons();
        break;
    case 'l':
        toggle(viewer.lightsource_rotating, "lightsource rotating mode on", "lightsource rotating mode off");
        break;
    case 'm':
        requests.change_mode = true;
        break;
    case 'p':
        toggle(viewer.dots, "dots enabled", "dots disabled");
        break;
    case 'r':
        viewer.rotate = 0.0;
        viewer.frames_drawn = 0;
        show_message("rotate off");
        break;
    case 'R':
        reset_to_defaults();
        build_palette();
        show_message("resetting variables to default");
        break;
    case 's':
        save_vars(session_settings);
        show_message("saving vars to ENV:Zelvo.vars");
        break;
    case 'S':
        save_vars(session_settings);
        save_vars(permanent_settings);
        show_message("saving vars to ENVARC:Zelvo.vars");
        break;
    case 't':
        choose_envmap();
        show_message("new texture loaded");
        break;
    case 'w':
        load_settings(session_settings, "loading vars from ENV:Zelvo.vars");
        break;
    case 'W':
        load_settings(permanent_settings, "loading vars from ENVARC:Zelvo.vars");
        break;
    default:
        break;
    }
}

void handle_raw_key(UWORD code) {
    switch (code) {
    case cursor_up:
        change_dot_luminance(+1);
        break;
    case cursor_down:
        change_dot_luminance(-1);
        break;
    case cursor_right:
        change_rotate(+1);
        break;
    case cursor_left:
        change_rotate(-1);
        break;
    default:
        break;
    }
}

void handle_button(UWORD code, Requests &requests) {
    if (code == SELECTDOWN) {
        requests.quit = true;
    } else if (code == MENUDOWN) {
        select_next_mode();
    }
}

void handle_event(const IntuiMessage &event, Requests &requests) {
    switch (event.Class) {
    case IDCMP_MOUSEMOVE:
        turn_object(event.MouseX, event.MouseY);
        break;
    case IDCMP_MOUSEBUTTONS:
        handle_button(event.Code, requests);
        break;
    case IDCMP_RAWKEY:
        handle_raw_key(event.Code);
        break;
    case IDCMP_VANILLAKEY:
        handle_character(event.Code, requests);
        break;
    default:
        break;
    }
}

} // namespace

Requests handle_events(MsgPort *port) {
    Requests requests;
    while (Message *message = GetMsg(port)) {
        handle_event(*reinterpret_cast<const IntuiMessage *>(message), requests);
        ReplyMsg(message);
    }
    return requests;
}
