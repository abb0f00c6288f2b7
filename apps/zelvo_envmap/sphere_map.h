// SPDX-License-Identifier: MIT
// Makes textures of pictures. The viewer looks a texel up by the normal at a place of the object (mode 1), or
// by the place itself (mode 2).
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

/// What a picture shows.
enum class Kind { photograph, panorama, ball };

/// Makes the map of a picture:
/// - of a photograph, its largest square in the middle;
/// - of a panorama, what a sphere of chrome at its place reflects. The panorama's middle is behind the sphere
/// and its
///   left is on the left. `turn` turns it to the right by so many degrees;
/// - of the photograph of a ball of chrome that fills the largest square in the middle, the ball.
LightMap make_map(const LightPicture &picture, Kind kind, double turn);

/// Spreads the light of each texel by a bell curve of this standard deviation in texels.
void blur(LightMap &map, double deviation);

/// The bytes of a texture file. The light is multiplied by 2 to the power of `exposure`, and levels are moved
/// away from the middle grey by the factor `contrast`. The texture is upside down, since the normals point
/// inwards.
std::string encode(const LightMap &map, double exposure, double contrast);

} // namespace envmap
