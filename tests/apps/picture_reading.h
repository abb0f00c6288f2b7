// SPDX-License-Identifier: MIT
// Reads pictures with the libraries that other programs use.
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

/// A picture with red, green, blue and opacity.
struct ColourPicture {
    int width = 0;
    int height = 0;
    std::vector<std::array<std::uint8_t, 4>> pixels;
};

/// A picture of brightness and opacity.
struct GreyPicture {
    int width = 0;
    int height = 0;
    std::vector<std::array<std::uint8_t, 2>> pixels;

    const std::array<std::uint8_t, 2> &at(int x, int y) const {
        return pixels[static_cast<std::size_t>(y * width + x)];
    }
};

/// One picture of an animation.
struct AnimationPicture {
    IndexedPicture picture;
    int left = 0;
    int top = 0;
    /// In hundredths of a second.
    int delay = 0;
    /// Whether the picture is erased before the next one, so that nothing of a larger one remains.
    bool is_cleared_afterwards = false;
    /// Whether one of its colours is transparent.
    bool has_transparency = false;
    /// Whether the picture has its own palette instead of the animation's.
    bool has_own_palette = false;
};

/// A whole animation.
struct AnimationFile {
    int width = 0;
    int height = 0;
    /// How often it repeats: 0 for forever, -1 if it does not say.
    int repetitions = -1;
    std::vector<AnimationPicture> pictures;
};

/// Reads a PNG of 8-bit palette indices. Anything else fails the test and gives an empty picture.
IndexedPicture read_png(const std::string &path);

/// Reads a PNG of 8-bit red, green, blue and opacity. Anything else fails the test and gives an empty
/// picture.
ColourPicture read_colour_png(const std::string &path);

/// Reads a PNG of 8-bit brightness and opacity. Anything else fails the test and gives an empty picture.
GreyPicture read_grey_png(const std::string &path);

/// Reads a GIF.
AnimationFile read_gif(const std::string &path);

/// Reads a binary PGM with maximum 255. The picture has no palette.
IndexedPicture read_pgm(const std::string &bytes);
