// SPDX-License-Identifier: MIT
// Fills buffers and model arrays at random.
#include "random_scene.h"

#include "display/frame_buffers.h"
#include "object/model.h"
#include "raster/dots.h"
#include "raster/texture_map.h"

#include <algorithm>
#include <limits>

std::uint32_t Random::bits() {
    state_ += 0x9E3779B97F4A7C15;
    std::uint64_t mixed = (state_ ^ (state_ >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    return static_cast<std::uint32_t>(mixed >> 32);
}

float Random::between(float low, float high) {
    return low + (high - low) * (static_cast<float>(bits() >> 8) / 16777216.0F);
}

float Random::wild_number() {
    using Limits = std::numeric_limits<float>;
    switch (below(14)) {
    case 0:
        return Limits::quiet_NaN();
    case 1:
        return -Limits::quiet_NaN();
    case 2:
        return Limits::infinity();
    case 3:
        return -Limits::infinity();
    case 4:
        return Limits::max();
    case 5:
        return -Limits::max();
    case 6:
        return Limits::denorm_min();
    case 7:
        return 2147483648.0F;
    case 8:
        return -2147483648.0F;
    case 9:
        return 2147483520.0F;
    case 10:
        return between(-3e9F, 3e9F);
    case 11:
        return between(-70000.0F, 70000.0F);
    case 12:
        return -0.0F;
    default:
        return between(-1.0F, 1.0F);
    }
}

namespace {

template <typename T>
HeapArray<T> noise(std::size_t count, Random &random) {
    HeapArray<T> array = allocate_array<T>(count);
    for (std::size_t i = 0; i < count; ++i) {
        array[i] = static_cast<T>(random.bits());
    }
    return array;
}

/// A number in the range `low` .. `high`, sometimes outside it.
float about(float low, float high, Random &random) {
    const float margin = (high - low) * 0.3F;
    return random.once_in(4) ? random.between(low - margin, high + margin) : random.between(low, high);
}

/// A screen position and depth for this kind of shape. Small shapes are near `centre`.
Vec3 random_point(Shapes shapes, const Vec3 &centre, Random &random) {
    const auto width = static_cast<float>(frame_width);
    const auto height = static_cast<float>(frame_height);
    switch (shapes) {
    case Shapes::small:
        return {centre.x + random.between(-6.0F, 6.0F), centre.y + random.between(-6.0F, 6.0F),
                centre.z + random.between(-8.0F, 8.0F)};
    case Shapes::any:
        return {about(0.0F, width, random), about(0.0F, height, random), about(0.0F, 255.0F, random)};
    case Shapes::steep:
        return random.once_in(2) ? Vec3{centre.x + random.between(-0.01F, 0.01F), about(0.0F, height, random),
                                        about(0.0F, 255.0F, random)}
                                 : Vec3{about(0.0F, width, random), centre.y + random.between(-0.01F, 0.01F),
                                        about(0.0F, 255.0F, random)};
    case Shapes::grid:
        // Few different values, so that xs, ys and depths are often equal.
        return {static_cast<float>(random.below(frame_width / 4 + 1) * 4) + (random.once_in(3) ? 0.5F : 0.0F),
                static_cast<float>(random.below(frame_height + 8) - 4),
                static_cast<float>(random.below(3) * 64)};
    case Shapes::wild:
        break;
    }
    const auto coordinate = [&random](float high) {
        return random.once_in(4) ? random.wild_number() : about(0.0F, high, random);
    };
    return {coordinate(width), coordinate(height), coordinate(255.0F)};
}

/// A map coordinate or a component of a normal.
float random_record(Shapes shapes, Random &random) {
    return shapes == Shapes::wild && random.once_in(3) ? random.wild_number()
                                                       : random.between(-128.0F, 128.0F);
}

/// Appends a polygon of `vertices` points that are near each other in the list, and returns its number of
/// triangles. Sometimes one of its indices is invalid.
int add_polygon(std::vector<std::uint16_t> &words, int vertices, int points, Random &random) {
    words.push_back(static_cast<std::uint16_t>(vertices));
    const int first = random.below(points);
    const int used = std::max(vertices, 3);
    const int stranger = random.once_in(200) ? random.below(used) : used;
    for (int i = 0; i < used; ++i) {
        const int near = (first + random.below(4)) % points;
        words.push_back(static_cast<std::uint16_t>(i == stranger ? points + random.below(3) : near));
    }
    const bool names_no_point = stranger < used;
    words.push_back(static_cast<std::uint16_t>(random.once_in(2) ? first : random.below(0x10000)));
    if (vertices < 3) {
        // The next polygon begins among this one's words, so its count is arbitrary.
        words.resize(words.size() - static_cast<std::size_t>(3 - vertices));
        return names_no_point ? 0 : 1;
    }
    return names_no_point ? 0 : vertices - 2;
}

} // namespace

void open_noisy_frame(FrameSize size, Random &random) {
    frame_width = size.width;
    frame_height = size.height;
    chunkybuf1 = noise<std::uint8_t>(frame_pixels(), random);
    chunkybuf2 = noise<std::uint8_t>(frame_pixels(), random);
    zbuf = noise<std::uint16_t>(frame_pixels(), random);
    for (std::size_t i = 0; i < frame_pixels(); ++i) {
        // Mostly far depths, so that most pixels are drawn.
        zbuf[i] = random.once_in(8) ? zbuf[i] : static_cast<std::uint16_t>(zbuf[i] & 0xFF);
    }
    envmap = noise<std::uint8_t>(envmap_bytes, random);
    dot_image = allocate_array<std::uint8_t>(static_cast<std::size_t>(dot_image_size) * dot_image_size);
    build_dot_image();
}

FrameContents frame_contents() {
    FrameContents contents;
    contents.pixels.assign(chunkybuf1.get(), chunkybuf1.get() + frame_pixels());
    contents.pixels.insert(contents.pixels.end(), chunkybuf2.get(), chunkybuf2.get() + frame_pixels());
    contents.depths.assign(zbuf.get(), zbuf.get() + frame_pixels());
    return contents;
}

void restore_frame(const FrameContents &contents) {
    const auto middle = contents.pixels.begin() + static_cast<std::ptrdiff_t>(frame_pixels());
    std::copy(contents.pixels.begin(), middle, chunkybuf1.get());
    std::copy(middle, contents.pixels.end(), chunkybuf2.get());
    std::copy(contents.depths.begin(), contents.depths.end(), zbuf.get());
}

int make_random_object(Shapes shapes, int polygons, Random &random) {
    const int points = 16 + random.below(polygons);
    const auto count = static_cast<std::size_t>(points);
    const std::size_t records = count + 1;
    point_chunk_bytes = points * 12;
    point_chunk = allocate_array<Vec3>(records);
    lwopoints2 = allocate_array<Vec3>(records);
    lwopoints3 = allocate_array<Vec3>(records);
    lwonormals2 = allocate_array<Vec3>(records);
    lwonormals3 = allocate_array<Vec3>(records);
    lwofis = allocate_array<float>(count);
    // Every other object of small shapes is well inside the range of depths, and most of those have a small
    // part of the map, as neighbouring points of real objects do.
    const bool is_inside = shapes == Shapes::small && random.once_in(2);
    const bool is_in_part = is_inside && !random.once_in(4);
    const Vec3 part{random.between(-128.0F, 128.0F), random.between(-128.0F, 128.0F), 0.0F};
    const float reach = random.between(0.1F, 8.0F);
    Vec3 centre{};
    for (std::size_t i = 0; i < count; ++i) {
        if (i % 8 == 0) {
            centre = random_point(shapes == Shapes::wild ? Shapes::wild : Shapes::any, centre, random);
            centre.z = is_inside ? random.between(60.0F, 200.0F) : centre.z;
        }
        lwopoints3[i] = random_point(shapes, centre, random);
        for (Vec3 *record : {&lwopoints2[i], &lwonormals2[i], &lwonormals3[i]}) {
            *record = {random_record(shapes, random), random_record(shapes, random),
                       random_record(shapes, random)};
            if (is_in_part) {
                record->x = part.x + random.between(-reach, reach);
                record->y = part.y + random.between(-reach, reach) / 4.0F;
            }
        }
        lwofis[i] = random.once_in(3) ? random.between(25.0F, 255.0F) : -1.0F;
    }

    std::vector<std::uint16_t> words;
    int triangles = 0;
    for (int made = 0; made < polygons;) {
        const int kind = random.below(8);
        const int run = kind == 0 ? 1 : 1 + random.below(80);
        for (int i = 0; i < run; ++i, ++made) {
            const int vertices = kind == 0 ? random.below(random.once_in(20) ? 200 : 9) : kind <= 2 ? 4 : 3;
            triangles += add_polygon(words, vertices, points, random);
        }
    }
    if (random.once_in(3)) {
        words.resize(words.size() - static_cast<std::size_t>(1 + random.below(3)));
    }
    polygon_chunk = allocate_array<std::uint16_t>(words.size());
    std::copy(words.begin(), words.end(), polygon_chunk.get());
    polygon_chunk_bytes = static_cast<std::int32_t>(words.size() * 2);
    return triangles;
}
