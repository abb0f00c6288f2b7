// SPDX-License-Identifier: MIT
// The viewer state: all settings and toggles in one record. All rooms read it; the commands change it.
#pragma once

#include "core/vec3.h"

#include <array>
#include <cstdint>

/// Seconds for which a message stays on the screen.
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

/// One gamma per channel; the palette raises its grey ramp to the power 1 / gamma.
struct Gammas {
    double red = 1.0;
    double green = 1.0;
    double blue = 1.0;
};

/// All settings and toggles with their start values. The first group is saved in the settings file, in this
/// order. Loading it checks no ranges.
struct ViewerState {
    /// Gamma of each channel; 0.02 .. 3.0 by key.
    Gammas gammas;
    /// Spin speed, added to `spin_angle` once per frame; -4.0 .. 4.0 by key.
    double rotate = 0.0;
    /// The render mode, 0 .. 6; any other value draws nothing.
    std::int32_t obj_style = mode_envmap;
    /// How a frame begins: 0 cleared, 1 faded, 2 blurred, 3 blurred and rising; any other value keeps the old
    /// pixels.
    std::int32_t clear_style = 0;
    /// Flag: show the frame-rate counter.
    std::int32_t fps = 1;
    /// Flag: draw a dot at every point, over the faces.
    std::int32_t dots = 0;
    /// Brightness of a dot on a cleared frame: 65536 adds the sprite's texels as they are; 0 .. 131072 by
    /// key.
    std::int32_t dot_lum = 25600;
    /// Brightness of a dot with any other clear style, in the same unit; 0 .. 32768 by key.
    std::int32_t dot_lum_in_blur = 2560;
    /// Flag without an effect: the key shows a message and the settings store it, but the system converts
    /// every frame.
    std::int32_t internal_c2p_enabled = 0;
    /// Path of the environment map, terminated.
    std::array<char, 1024> envmap_filename{"Zelvo_envmap.chunky"};
    /// The display mode, a number that only the system understands.
    std::int32_t ModeID = 0;
    /// Size, in pixels, that the next display is opened with.
    std::int32_t width = 320;
    std::int32_t height = 256;

    /// Flag: in modes 3 and 4 the mouse turns the light instead of the object.
    std::int32_t lightsource_rotating = 0;
    /// Flag: reverses the back-face test. The command also negates the light vectors.
    std::int32_t flip = 0;
    /// Flag: no polygon is culled.
    std::int32_t doubleside = 0;
    /// Sums of all mouse movements, in counts; 80 counts are one radian.
    std::int32_t tilt_x = 0;
    std::int32_t tilt_y = 0;
    /// Spin of the object, in units of 0.004 radian.
    double spin_angle = 0.0;
    /// The light at rest, with its components in reverse order; the light before its rotation; the light that
    /// lighting reads.
    Vec3 light_base{3.0F, -1.0F, -1.0F};
    Vec3 light_source{-1.0F, -1.0F, 3.0F};
    Vec3 light{-1.0F, -1.0F, 3.0F};
    /// The text at the top left of the picture, terminated.
    std::array<char, 128> message_line{"Zelvo"};
    /// Seconds left for the message line, which is drawn while this is above 0.
    double message_timer = message_duration;
    /// Frames since the loop began, or since a key stopped the spin.
    std::int32_t frames_drawn = 0;
};

/// The one instance. Every room reads it. The commands, the settings, the requesters, the light's rotation,
/// the message line and the frame loop write it.
extern ViewerState viewer;

/// Polygons of the current frame including culled ones, or dots of the effect. Written by the face loops and
/// by the effect; the dots overlay sets it to 0.
extern std::int32_t faces_seen;

/// Triangles of the current frame that were given to a filler. Written by the face loops; the dots overlay
/// sets it to 0.
extern std::int32_t triangles_drawn;

/// Resets to their defaults the settings that "R" resets. The texture's name, the display's mode and size and
/// everything that is not saved stay as they are. The caller rebuilds the palette and shows a message.
void reset_to_defaults();

/// Formats a text as printf does into the message line, cut to its buffer, and restarts the line's timer.
[[gnu::format(printf, 1, 2)]] void show_message(const char *format, ...);
