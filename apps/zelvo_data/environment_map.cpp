// SPDX-License-Identifier: MIT
// Traces one reflected ray per texel sample into a small imaginary studio.
#include "environment_map.h"

#include "mesh.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zelvo_data {

namespace {

constexpr int map_size = 256;
constexpr double map_centre = 128.0;
constexpr double normal_length = 123.0;
constexpr int samples_per_side = 4;

// 0 below `from`, 1 above `to`, and a smooth ramp in between.
double ramp(double value, double from, double to) {
    const double t = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

double mix(double a, double b, double share) {
    return a + (b - a) * share;
}

// A bright panel that faces the stage. It covers the directions that hit the rectangle around `centre` on
// a plane one unit away in direction `centre`, and fades out over a narrow border.
struct LightPanel {
    Point3 centre;
    Point3 right;
    Point3 up;
    double half_width;
    double half_height;
    double border;
    double brightness;
    double bars; // Half the width of the bars that divide the panel into four panes; 0 for none.
};

LightPanel panel(const Point3 &direction, double half_width, double half_height, double border,
                 double brightness, double bars = 0.0) {
    const Point3 centre = normalized(direction);
    const Point3 right = normalized(cross({0.0, 1.0, 0.0}, centre));
    return {centre, right, cross(centre, right), half_width, half_height, border, brightness, bars};
}

double panel_coverage(const LightPanel &light, const Point3 &ray) {
    const double depth = dot(ray, light.centre);
    if (depth <= 0.05) {
        return 0.0;
    }
    const double x = std::abs(dot(ray, light.right) / depth);
    const double y = std::abs(dot(ray, light.up) / depth);
    double coverage = (1.0 - ramp(x, light.half_width - light.border, light.half_width)) *
                      (1.0 - ramp(y, light.half_height - light.border, light.half_height));
    if (light.bars > 0.0) {
        coverage *= ramp(x, light.bars * 0.5, light.bars * 1.5) * ramp(y, light.bars * 0.5, light.bars * 1.5);
    }
    return coverage;
}

// Sharp black and white tiles would outshine the lights and flicker on small objects. These have soft edges
// and little contrast, and blend into one tone far away, where many of them would share one texel.
double floor_brightness(const Point3 &ray) {
    const double across = ray.x / -ray.y;
    const double away = ray.z / -ray.y;
    const auto wave = [](double position) {
        const double phase = position * 0.9 + 0.25 - std::floor(position * 0.9 + 0.25);
        return std::clamp((std::abs(phase - 0.5) - 0.25) * 12.0, -1.0, 1.0);
    };
    const double distance = std::sqrt(across * across + away * away);
    const double contrast = 1.0 - ramp(distance, 1.2, 5.0);
    const double tone = mix(0.05, 0.36, ramp(-ray.y, 0.0, 0.80));
    return tone * (1.0 + 0.24 * contrast * wave(across) * wave(away));
}

// The wall glows at the horizon; above it the room darkens towards the ceiling.
double wall_brightness(const Point3 &ray) {
    const double wall = mix(0.90, 0.50, ramp(ray.y, 0.0, 0.38));
    return mix(wall, 0.27, ramp(ray.y, 0.22, 0.95));
}

// Brightness from 0 to 1 of the room in a direction (x right, y up, z towards the viewer).
double room_brightness(const Point3 &ray) {
    static const std::array<LightPanel, 7> lights = {
        // The key light is a window of four panes, up on the left.
        panel({-0.66, 0.58, 0.55}, 0.46, 0.40, 0.05, 1.0, 0.035),
        // A tall strip on the right draws long lines along round bodies.
        panel({0.95, 0.26, 0.30}, 0.12, 0.62, 0.05, 0.95),
        // A soft light under the ceiling and a wide glow on the floor enliven steep facets.
        panel({0.10, 0.93, 0.10}, 0.62, 0.30, 0.28, 0.74),
        panel({0.30, -0.70, 0.50}, 0.70, 0.26, 0.26, 0.66),
        // Three lights behind the stage show up near outlines and in facets that lean away from the viewer.
        panel({-0.62, 0.62, -0.50}, 0.34, 0.26, 0.06, 0.88),
        panel({0.45, 0.50, -0.74}, 0.26, 0.36, 0.06, 0.78),
        panel({-0.20, -0.62, -0.76}, 0.50, 0.20, 0.12, 0.60),
    };
    double light = ray.y < 0.0 ? floor_brightness(ray) : wall_brightness(ray);
    // The horizon is a fine line of light around the room.
    light = std::max(light, 0.97 * (1.0 - ramp(std::abs(ray.y - 0.02), 0.015, 0.06)));
    for (const LightPanel &source : lights) {
        light = mix(light, std::max(light, source.brightness), panel_coverage(source, ray));
    }
    return light;
}

// Brightness for a normal given in units of the normal length (x right, y up).
double reflected_brightness(double x, double y) {
    const double squared = x * x + y * y;
    // No normal is longer than 1. The rest of the square continues the rim outwards.
    const double length = std::sqrt(squared);
    const double shrink = length > 0.999 ? 0.999 / length : 1.0;
    const Point3 normal{x * shrink, y * shrink, std::sqrt(1.0 - std::min(squared, 0.999 * 0.999))};
    const Point3 ray{2.0 * normal.z * normal.x, 2.0 * normal.z * normal.y, 2.0 * normal.z * normal.z - 1.0};
    // Darkening the rim separates the outline of an object from a bright background and from itself.
    const double rim = mix(0.16, 1.0, ramp(normal.z, 0.04, 0.42));
    return room_brightness(ray) * rim;
}

} // namespace

Bytes build_environment_map() {
    Bytes map;
    map.reserve(static_cast<std::size_t>(map_size) * map_size);
    for (int row = 0; row < map_size; ++row) {
        for (int column = 0; column < map_size; ++column) {
            double sum = 0.0;
            for (int sample = 0; sample < samples_per_side * samples_per_side; ++sample) {
                const double dx = (sample % samples_per_side + 0.5) / samples_per_side - 0.5;
                const int sample_row = sample / samples_per_side;
                const double dy = (sample_row + 0.5) / samples_per_side - 0.5;
                sum += reflected_brightness((map_centre - column - dx) / normal_length,
                                            (row + dy - map_centre) / normal_length);
            }
            const double mean = sum / (samples_per_side * samples_per_side);
            map.push_back(static_cast<std::uint8_t>(std::clamp(mean * 255.0 + 0.5, 0.0, 255.0)));
        }
    }
    return map;
}

} // namespace zelvo_data
