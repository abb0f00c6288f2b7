// SPDX-License-Identifier: MIT
// Object files of random contents are read back as they were.
#include "object_reading.h"
#include "shared/lwob_writer.h"

#include <algorithm>
#include <bit>
#include <gtest/gtest.h>
#include <random>
#include <stdexcept>

namespace {

ReadObject read_back(const LwobObject &object) {
    const Bytes bytes = encode_lwob(object);
    return parse_object({bytes.begin(), bytes.end()});
}

LwobObject random_object(std::mt19937 &random) {
    const auto up_to = [&random](std::size_t most) { return random() % (most + 1); };
    LwobObject object;
    // Any bits, also those of NaN and infinity.
    object.points.resize(1 + up_to(50));
    for (Vec3 &point : object.points) {
        point = {std::bit_cast<float>(static_cast<std::uint32_t>(random())),
                 std::bit_cast<float>(static_cast<std::uint32_t>(random())), -0.0F};
    }
    object.surfaces.resize(1 + up_to(5));
    for (std::size_t i = 0; i < object.surfaces.size(); ++i) {
        object.surfaces[i].name = std::to_string(i) + std::string(up_to(300), 'n');
        object.surfaces[i].colour = {static_cast<std::uint8_t>(random()), 0, 255};
        object.surfaces[i].is_two_sided = up_to(1) == 1;
    }
    for (std::size_t polygons = up_to(30); polygons > 0; --polygons) {
        const std::size_t corners = up_to(up_to(20) == 0 ? 65535 : 9);
        object.polygon_words.push_back(static_cast<std::uint16_t>(corners));
        for (std::size_t i = 0; i < corners; ++i) {
            object.polygon_words.push_back(static_cast<std::uint16_t>(up_to(object.points.size() - 1)));
        }
        object.polygon_words.push_back(static_cast<std::uint16_t>(1 + up_to(object.surfaces.size() - 1)));
    }
    object.notes_before_points.resize(up_to(3), {"NAME", std::string(up_to(9), 't')});
    object.notes_after_polygons.resize(up_to(3), {"NOTE", std::string(up_to(9), 't')});
    return object;
}

void expect_same(const ReadObject &read, const LwobObject &object) {
    ASSERT_EQ(read.points.size(), object.points.size());
    for (std::size_t i = 0; i < object.points.size(); ++i) {
        EXPECT_EQ(std::bit_cast<std::uint32_t>(read.points[i].x),
                  std::bit_cast<std::uint32_t>(object.points[i].x));
        EXPECT_EQ(std::bit_cast<std::uint32_t>(read.points[i].y),
                  std::bit_cast<std::uint32_t>(object.points[i].y));
        EXPECT_EQ(std::bit_cast<std::uint32_t>(read.points[i].z),
                  std::bit_cast<std::uint32_t>(object.points[i].z));
    }
    std::vector<std::uint16_t> words;
    for (const ReadPolygon &polygon : read.polygons) {
        words.push_back(static_cast<std::uint16_t>(polygon.corners.size()));
        words.insert(words.end(), polygon.corners.begin(), polygon.corners.end());
        words.push_back(static_cast<std::uint16_t>(polygon.surface));
    }
    EXPECT_TRUE(words == object.polygon_words);
    ASSERT_EQ(read.surfaces.size(), object.surfaces.size());
    for (std::size_t i = 0; i < object.surfaces.size(); ++i) {
        EXPECT_EQ(read.surfaces[i].name, object.surfaces[i].name);
        EXPECT_EQ(read.surfaces[i].colour[0], object.surfaces[i].colour[0]);
        EXPECT_EQ((read.surfaces[i].flags & 256) != 0, object.surfaces[i].is_two_sided);
    }
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(read.chunks, "NAME")),
              object.notes_before_points.size());
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(read.chunks, "SURF")), object.surfaces.size());
}

TEST(LwobWriter, WritesWhatAReaderOfTheFormatFinds) {
    std::mt19937 random(20050223);
    for (int i = 0; i < 300; ++i) {
        const LwobObject object = random_object(random);
        ASSERT_NO_FATAL_FAILURE(expect_same(read_back(object), object)) << i;
    }
}

TEST(LwobWriter, RefusesNamesOfChunksThatDoNotHaveFourCharacters) {
    LwobObject object;
    object.notes_before_points.push_back({"LONGER", "text"});
    EXPECT_THROW(encode_lwob(object), std::invalid_argument);
}

} // namespace
