// SPDX-License-Identifier: MIT
// A picture as amounts of light.
#pragma once

#include <string>
#include <vector>

namespace envmap {

/// Rows of luminance in linear light, top row first; 1 is the white of an ordinary picture.
struct LightPicture {
    int width = 0;
    int height = 0;
    std::vector<float> light;

    float at(int x, int y) const {
        return light[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                     static_cast<std::size_t>(x)];
    }
};

/// Reads a picture of any format that OpenImageIO reads, upright, with transparent parts black. Whole numbers
/// are taken as sRGB, and floats as linear light. If it cannot be read, the result is empty and `why` has the
/// reason.
LightPicture read_picture(const std::string &path, std::string &why);

/// The amount of light of a level from 0 to 1 in sRGB, and the reverse.
float light_of(float level);
float level_of(float light);

} // namespace envmap
