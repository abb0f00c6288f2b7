// SPDX-License-Identifier: MIT
// Tests that the fast forms compute points, normals and lights with the bits of the plain ones.
#include "bits.h"
#include "object/model.h"
#include "pipeline/lighting.h"
#include "pipeline/rotation.h"
#include "random_scene.h"
#include "support/instruction_sets.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

TEST(FastPoints, HaveTheBitsOfThePlainOnes) {
    const std::vector<std::int64_t> sets = instruction_sets();
    Random random(12);
    open_noisy_frame({100, 75}, random);
    std::size_t compared = 0;
    for (std::size_t scene = 0; compared < points_wanted; ++scene) {
        make_random_object(scene % 3 == 0 ? Shapes::wild : Shapes::any, 4000, random);
        const auto count = static_cast<std::size_t>(point_count());
        use_instruction_set(sets[scene % sets.size()]);
        set_rotation(random.between(-9.0F, 9.0F), random.between(-9.0F, 9.0F), random.between(-9.0F, 9.0F));
        const Projection projection{random.between(0.3F, 6.0F), random.between(0.3F, 6.0F),
                                    random.between(0.0F, 1000.0F), random.between(0.0F, 1000.0F)};
        plain::project_points(projection);
        const auto points = bits_of(lwopoints3, count);
        fast::project_points(projection);
        ASSERT_EQ(points, bits_of(lwopoints3, count)) << "scene " << scene;

        plain::rotate_normals();
        const auto normals = bits_of(lwonormals3, count);
        fast::rotate_normals();
        ASSERT_EQ(normals, bits_of(lwonormals3, count)) << "scene " << scene;
        compared += count;
    }
    use_instruction_set(0);
}

TEST(FastLights, HaveTheBitsOfThePlainOnes) {
    const std::vector<std::int64_t> sets = instruction_sets();
    Random random(13);
    std::size_t compared = 0;
    for (std::size_t scene = 0; compared < points_wanted; ++scene) {
        make_random_object(scene % 3 == 0 ? Shapes::wild : Shapes::any, 3000, random);
        use_instruction_set(sets[scene % sets.size()]);
        viewer.light = {random.between(-3.0F, 3.0F), random.between(-3.0F, 3.0F),
                        random.between(-3.0F, 3.0F)};
        const auto count = static_cast<std::size_t>(point_count());
        std::vector<std::uint32_t> points;
        for (std::size_t i = 0; i < count; ++i) {
            points.push_back(static_cast<std::uint32_t>(random.below(point_count())));
        }
        plain::vertex_lights(points.data(), count);
        const auto colours = bits_of(lwofis.get(), count);
        fast::vertex_lights(points.data(), count);
        const auto fast_point_colours = bits_of(lwofis.get(), count);
        for (std::size_t i = 0; i < count; ++i) {
            const Vec3 &n = lwonormals3[i];
            ASSERT_EQ(colours[i], fast_point_colours[i])
                << "normal " << n.x << ", " << n.y << ", " << n.z << " on "
                << instruction_set_name(sets[scene % sets.size()]) << ", scene " << scene;
        }

        // Nine arrays of corners, taken from the points' floats.
        const std::size_t faces = count / 4;
        const float *floats = &lwopoints3[0].x;
        FaceCorners corners;
        for (std::size_t c = 0; c < 3; ++c) {
            corners.x[c] = floats + c * 7;
            corners.y[c] = floats + c * 11 + 1;
            corners.depth[c] = floats + c * 13 + 2;
        }
        std::vector<float> plain_colours(faces);
        std::vector<float> fast_colours(faces);
        plain::face_lights(corners, faces, plain_colours.data());
        fast::face_lights(corners, faces, fast_colours.data());
        ASSERT_EQ(bits_of(plain_colours.data(), faces), bits_of(fast_colours.data(), faces))
            << "scene " << scene;
        compared += count;
    }
    use_instruction_set(0);
}

TEST(FastLights, LightAnyNumberOfFacesAndWriteNoOtherColour) {
    constexpr std::size_t most = 40;
    constexpr float untouched = -7.0F;
    Random random(17);
    viewer.light = {1.0F, 2.0F, -3.0F};
    for (const std::int64_t set : instruction_sets()) {
        use_instruction_set(set);
        for (std::size_t faces = 0; faces <= most; ++faces) {
            // The arrays have exactly as many faces, so that a sanitizer detects a read past them.
            std::array<std::vector<float>, 9> values;
            for (std::vector<float> &array : values) {
                for (std::size_t i = 0; i < faces; ++i) {
                    array.push_back(random.between(-100.0F, 100.0F));
                }
            }
            FaceCorners corners;
            for (std::size_t c = 0; c < 3; ++c) {
                corners.x[c] = values[3 * c].data();
                corners.y[c] = values[3 * c + 1].data();
                corners.depth[c] = values[3 * c + 2].data();
            }
            std::vector<float> expected(most + 16, untouched);
            std::vector<float> actual(most + 16, untouched);
            plain::face_lights(corners, faces, expected.data());
            fast::face_lights(corners, faces, actual.data());
            ASSERT_EQ(bits_of(expected.data(), expected.size()), bits_of(actual.data(), actual.size()))
                << faces << " faces on " << instruction_set_name(set);
        }
    }
    use_instruction_set(0);
}
