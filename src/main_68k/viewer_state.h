// SPDX-License-Identifier: MIT
// The viewer state: every setting and toggle, in one record that all rooms read and the commands change.
#pragma once

#include "core/vec3.h"

#include <array>
#include <cstdint>

/// Seconds for which a status message stays on the screen.
constexpr double message_duration = 2.0;

/// Values of `obj_style`, in the order of the mode table.
enum RenderMode : std::int32_t {
    mode_effect = 0,
    mode_envmap = 1,
    mode_texturemap = 2,
    mode_lightsourced = 3,
    mode_gouraud = 4,
    mode_zlight = 5,
    mode_dots = 6,
};

/// One gamma a channel; the palette bends its grey ramp by 1 / gamma.
struct Gammas {
    double red = 1.0;
    double green = 1.0;
    double blue = 1.0;
};

/// All settings and toggles with their start values. The first group is what the settings file keeps, in its
/// order; nothing here is range-checked on loading.
struct ViewerState {
    /// 0.02 .. 3.0 by key.
    Gammas gammas;
    /// Spin speed, added to `spin_angle` once a frame; -4.0 .. 4.0 by key.
    double rotate = 0.0;
    /// The render mode, 0 .. 6; any other value draws nothing.
    std::int32_t obj_style = mode_envmap;
    /// How a frame begins: 0 cleared, 1 faded, 2 blurred, 3 blurred and rising; any other value keeps it.
    std::int32_t clear_style = 0;
    /// Flag: show the frame-rate counter.
    std::int32_t fps = 1;
    /// Flag: draw a dot at every point over the faces.
    std::int32_t dots = 0;
    /// Brightness of a dot on a cleared frame, in 1/65536 of a texel; 0 .. 131072 by key.
    std::int32_t dot_lum = 25600;
    /// Brightness of a dot while the frames blur, in 1/65536 of a texel; 0 .. 32768 by key.
    std::int32_t dot_lum_in_blur = 2560;
    /// Flag without an effect: announced, saved and loaded, but every frame takes the system's conversion.
    std::int32_t internal_c2p_enabled = 0;
    /// Path of the environment map, terminated.
    std::array<char, 1024> envmap_filename{"Zelvo_envmap.chunky"};
    /// The display mode, an opaque number of the system.
    std::int32_t ModeID = 0;
    /// Size of the next display to be opened, in pixels.
    std::int32_t width = 320;
    std::int32_t height = 256;

    /// Flag: in modes 3 and 4 the mouse turns the light instead of the object.
    std::int32_t lightsource_rotating = 0;
    /// Flag: reverses the back-face test; each toggle also negates the light vectors.
    std::int32_t flip = 0;
    /// Flag: no polygon is culled.
    std::int32_t doubleside = 0;
    /// Sums of all mouse movements, in counts; 80 counts turn the object by one radian.
    std::int32_t tilt_x = 0;
    std::int32_t tilt_y = 0;
    /// Spin of the object, in units of 0.004 radian.
    double spin_angle = 0.0;
    /// The light at rest, components in reverse order; the light before its rotation; the light that shading
    /// reads.
    Vec3 light_base{3.0F, -1.0F, -1.0F};
    Vec3 light_source{-1.0F, -1.0F, 3.0F};
    Vec3 light{-1.0F, -1.0F, 3.0F};
    /// The text at the top left of the picture, terminated.
    std::array<char, 128> message_line{"Zelvo"};
    /// Seconds for which the message line is still drawn; drawn while above 0.
    double message_timer = message_duration;
    /// Frames since the loop began or since the spin was stopped by key.
    std::int32_t frames_drawn = 0;
};

/// The one instance; read everywhere, written by the commands, the frame loop and the settings file.
extern ViewerState viewer;

/// Polygons (or effect dots) examined in the current frame, culled ones included; written by what draws them.
extern std::int32_t faces_seen;

/// Triangles handed to a filler in the current frame; written by the face loops.
extern std::int32_t triangles_drawn;

/// Puts the settings that "R" resets back to their defaults. The texture's name, the display's mode and size
/// and everything that is not saved stay as they are; the caller rebuilds the palette and tells the user.
void reset_to_defaults();

/// Replaces the message line by a text in printf's form, cut to the line's buffer, and restarts its timer.
[[gnu::format(printf, 1, 2)]] void show_message(const char *format, ...);
