// SPDX-License-Identifier: MIT
// Reads pictures back with the libraries that other programs read them with.
#pragma once

#include "platform/shared/bitmap.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// A picture of palette indices.
struct IndexedPicture {
    int width = 0;
    int height = 0;
    std::vector<host::Colour> palette;
    std::vector<std::uint8_t> pixels;

    int at(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }
};

/// A picture of red, green, blue and opacity.
struct ColourPicture {
    int width = 0;
    int height = 0;
    std::vector<std::array<std::uint8_t, 4>> pixels;
};

/// One picture of an animation.
struct AnimationPicture {
    IndexedPicture picture;
    int left = 0;
    int top = 0;
    /// In hundredths of a second.
    int delay = 0;
    /// Whether the next picture begins on an empty one, so that a larger one leaves nothing of itself.
    bool is_cleared_afterwards = false;
    /// Whether one of its colours lets what is below it through.
    bool has_transparency = false;
    /// Whether the palette is the picture's own instead of the animation's.
    bool has_own_palette = false;
};

/// An animation as a whole.
struct AnimationFile {
    int width = 0;
    int height = 0;
    /// How often it is to be repeated, 0 for ever; -1 if it does not say.
    int repetitions = -1;
    std::vector<AnimationPicture> pictures;
};

/// A PNG of 8-bit palette indices; an empty picture, and a failure of the test, for anything else.
IndexedPicture read_png(const std::string &path);

/// A PNG of 8-bit red, green, blue and opacity; an empty picture, and a failure of the test, for anything
/// else.
ColourPicture read_colour_png(const std::string &path);

/// A GIF.
AnimationFile read_gif(const std::string &path);

/// A binary PGM of maximum 255, without a palette.
IndexedPicture read_pgm(const std::string &bytes);
