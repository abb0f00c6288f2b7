// SPDX-License-Identifier: MIT
// Samples pictures at several places per texel.
#include "sphere_map.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace envmap {

namespace {

/// The length of normals in texels, and the place of the map's middle, counted from the middle of its first
/// texel.
constexpr double normal_length = 123.0;
constexpr double middle = (map_side - 1) / 2.0;

/// The light at a place, from the four pixels around it; (0, 0) is the middle of the first pixel. If the
/// picture goes all around, its first column follows the last.
float interpolated(const LightPicture &picture, double x, double y, bool goes_around) {
    const auto column = [&](double i) {
        const double wrapped = goes_around ? i - picture.width * std::floor(i / picture.width) : i;
        return std::clamp(static_cast<int>(wrapped), 0, picture.width - 1);
    };
    const auto row = [&](double i) { return std::clamp(static_cast<int>(i), 0, picture.height - 1); };
    const double left = std::floor(x);
    const double top = std::floor(y);
    const auto across = static_cast<float>(x - left);
    const auto down = static_cast<float>(y - top);
    const auto mixed = [&](int line) {
        const float first = picture.at(column(left), line);
        return first + (picture.at(column(left + 1), line) - first) * across;
    };
    const float upper = mixed(row(top));
    return upper + (mixed(row(top + 1)) - upper) * down;
}

/// A map of which each texel is the mean of `sample(x, y)` at several places in it. Their number, along each
/// side of the texel, is `samples_per_side(x, y)`. Places are in texels from the middle of the map, x to the
/// right and y downwards.
template <typename Samples, typename Sample>
LightMap sampled(Samples samples_per_side, Sample sample) {
    LightMap map;
    map.reserve(static_cast<std::size_t>(map_side) * map_side);
    for (int row = 0; row < map_side; ++row) {
        for (int column = 0; column < map_side; ++column) {
            const int samples = samples_per_side(column - middle, row - middle);
            double sum = 0.0;
            for (int i = 0; i < samples * samples; ++i) {
                const double dx = (i % samples + 0.5) / samples - 0.5;
                const int line = i / samples;
                const double dy = (line + 0.5) / samples - 0.5;
                sum += static_cast<double>(sample(column - middle + dx, row - middle + dy));
            }
            map.push_back(static_cast<float>(sum / (samples * samples)));
        }
    }
    return map;
}

LightPicture largest_square(const LightPicture &picture) {
    const int side = std::min(picture.width, picture.height);
    LightPicture square{side, side, {}};
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            square.light.push_back(
                picture.at((picture.width - side) / 2 + x, (picture.height - side) / 2 + y));
        }
    }
    return square;
}

/// The map of the largest square in the picture's middle. A texel is this part of the square's side.
LightMap map_of_square(const LightPicture &picture, double texel, bool is_round) {
    const LightPicture square = largest_square(picture);
    const int side = square.width;
    const double step = side * texel;
    const int samples = std::max(1, static_cast<int>(std::ceil(step - 1e-9)));
    return sampled([samples](double, double) { return samples; },
                   [&](double x, double y) {
                       // Texels outside the ball continue its rim.
                       const double radius = std::hypot(x, y) / normal_length;
                       const double shrink = is_round && radius > 1.0 ? 1.0 / radius : 1.0;
                       return interpolated(square, (side - 1) / 2.0 + x * shrink * step,
                                           (side - 1) / 2.0 + y * shrink * step, false);
                   });
}

/// Averages squares of pixels, so that about twice as many columns are left as the map can show.
LightPicture reduced(const LightPicture &picture) {
    constexpr int most_columns = 1536;
    const int factor = picture.width / most_columns;
    if (factor < 2) {
        return picture;
    }
    LightPicture small{picture.width / factor, std::max(picture.height / factor, 1), {}};
    for (int row = 0; row < small.height; ++row) {
        for (int column = 0; column < small.width; ++column) {
            double sum = 0.0;
            for (int i = 0; i < factor * factor; ++i) {
                const int line = i / factor;
                sum += static_cast<double>(picture.at(column * factor + i % factor, row * factor + line));
            }
            small.light.push_back(static_cast<float>(sum / (factor * factor)));
        }
    }
    return small;
}

LightMap map_of_panorama(const LightPicture &whole, double turn) {
    const LightPicture picture = reduced(whole);
    // A texel near the rim shows a large part of the picture, and so needs many samples. Outside the rim all
    // texels show the same point, straight ahead of the viewer, which the sphere hides.
    const auto samples = [](double x, double y) {
        const double radius = std::hypot(x, y) / normal_length;
        return radius > 1.01 ? 1 : radius < 0.85 ? 6 : 12;
    };
    return sampled(samples, [&](double column, double row) {
        constexpr double longest = 0.9999;
        const double radius = std::hypot(column, row) / normal_length;
        const double shrink = radius > longest ? longest / radius : 1.0;
        // Axes: x to the right, y up, z towards the viewer.
        const double nx = column * shrink / normal_length;
        const double ny = -row * shrink / normal_length;
        const double nz = std::sqrt(1.0 - nx * nx - ny * ny);
        const double rx = 2.0 * nz * nx;
        const double ry = 2.0 * nz * ny;
        const double rz = 2.0 * nz * nz - 1.0;
        const double around = std::atan2(rx, -rz) / (2.0 * std::numbers::pi) - turn / 360.0;
        const double down = std::acos(std::clamp(ry, -1.0, 1.0)) / std::numbers::pi;
        return interpolated(picture, (around + 0.5) * picture.width - 0.5, down * picture.height - 0.5, true);
    });
}

} // namespace

LightMap make_map(const LightPicture &picture, Kind kind, double turn) {
    switch (kind) {
    case Kind::panorama:
        return map_of_panorama(picture, turn);
    case Kind::ball:
        return map_of_square(picture, 0.5 / normal_length, true);
    default:
        return map_of_square(picture, 1.0 / map_side, false);
    }
}

void blur(LightMap &map, double deviation) {
    if (!(deviation > 0.0)) {
        return;
    }
    const int reach = static_cast<int>(std::ceil(3.0 * deviation));
    std::vector<double> weights;
    double sum = 0.0;
    for (int i = -reach; i <= reach; ++i) {
        weights.push_back(std::exp(-0.5 * i * i / (deviation * deviation)));
        sum += weights.back();
    }
    const auto at = [](int row, int column) {
        return static_cast<std::size_t>(std::clamp(row, 0, map_side - 1)) * map_side +
               static_cast<std::size_t>(std::clamp(column, 0, map_side - 1));
    };
    // First along the rows, then along the columns.
    for (const bool is_down : {false, true}) {
        const LightMap before = map;
        for (int row = 0; row < map_side; ++row) {
            for (int column = 0; column < map_side; ++column) {
                double light = 0.0;
                int place = -reach;
                for (const double weight : weights) {
                    light +=
                        weight * static_cast<double>(
                                     before[is_down ? at(row + place, column) : at(row, column + place)]);
                    ++place;
                }
                map[at(row, column)] = static_cast<float>(light / sum);
            }
        }
    }
}

std::string encode(const LightMap &map, double exposure, double contrast) {
    const double factor = std::exp2(exposure);
    std::string bytes;
    bytes.reserve(map.size());
    for (const float light : map) {
        const auto level = static_cast<double>(level_of(static_cast<float>(light * factor)));
        const double stretched = std::clamp((level - 0.5) * contrast + 0.5, 0.0, 1.0);
        bytes += static_cast<char>(std::lround(stretched * 255.0));
    }
    std::ranges::reverse(bytes);
    return bytes;
}

} // namespace envmap
