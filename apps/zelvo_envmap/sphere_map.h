// SPDX-License-Identifier: MIT
// Makes textures from pictures. The viewer looks a texel up by the normal at a place of the object (mode 1),
// or by the place itself (mode 2).
#pragma once

#include "light_picture.h"

#include <cstdint>
#include <string>
#include <vector>

namespace envmap {

/// The rows and columns of a texture.
constexpr int map_side = 256;

/// A texture as amounts of light, as it is seen on a sphere: top row first, left column first.
using LightMap = std::vector<float>;

/// What a picture shows, and so what its map is.
enum class Kind {
    /// Anything: the map is the largest square in the middle.
    photograph,
    /// All directions: the map is what a chrome sphere in their midst reflects. The panorama's middle is
    /// behind
    /// the sphere, and its left is on the left.
    panorama,
    /// A chrome ball that fills the largest square in the middle: the map is the ball.
    ball
};

/// Makes the map of a picture. A panorama is first turned to the right by `turn` degrees.
LightMap make_map(const LightPicture &picture, Kind kind, double turn);

/// Blurs the map by a bell curve of this standard deviation, in texels.
void blur(LightMap &map, double deviation);

/// The bytes of a texture file. The light is multiplied by 2 to the power of `exposure`, and levels are moved
/// away from the middle grey by the factor `contrast`. The texture is upside down, since the normals point
/// inwards.
std::string encode(const LightMap &map, double exposure, double contrast);

} // namespace envmap
