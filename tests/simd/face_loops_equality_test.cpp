// SPDX-License-Identifier: MIT
// Tests that the fast face loops draw exactly what the plain ones draw.
#include "raster/face_loops.h"

#include "core/sanitized.h"
#include "object/model.h"
#include "pipeline/lighting.h"
#include "random_scene.h"
#include "support/instruction_sets.h"

#include <gtest/gtest.h>

#include <bit>
#include <functional>

namespace {

/// All results of a face loop.
struct LoopResult {
    FrameContents frame;
    std::vector<std::uint32_t> colours;
    std::int32_t faces = 0;
    std::int32_t triangles = 0;
    bool operator==(const LoopResult &) const = default;
};

/// Runs a loop on the current frame and colours, and then restores both.
LoopResult run_loop(const std::function<void()> &loop) {
    const FrameContents before = frame_contents();
    const auto count = static_cast<std::size_t>(point_count());
    const std::vector<float> colours_before(lwofis.get(), lwofis.get() + count);
    loop();
    LoopResult result{frame_contents(), {}, faces_seen, triangles_drawn};
    for (std::size_t i = 0; i < count; ++i) {
        // All NaNs count as equal, because their sign and payload depend on the processor.
        const float colour = lwofis[i];
        result.colours.push_back(colour != colour ? 0x7FC00000U : std::bit_cast<std::uint32_t>(colour));
    }
    restore_frame(before);
    std::copy(colours_before.begin(), colours_before.end(), lwofis.get());
    return result;
}

struct LoopPair {
    const char *name;
    std::function<void()> plain;
    std::function<void()> fast;
};

const std::vector<LoopPair> &loop_pairs() {
    static const std::vector<LoopPair> pairs{
        {"envmap", plain::face_loop_envmap, fast::face_loop_envmap},
        {"texturemap", [] { plain::face_loop_texturemap(plain::face_lights); },
         [] { fast::face_loop_texturemap(fast::face_lights); }},
        {"lightsourced", [] { plain::face_loop_lightsourced(plain::face_lights); },
         [] { fast::face_loop_lightsourced(fast::face_lights); }},
        {"gouraud", [] { plain::face_loop_gouraud(plain::vertex_lights); },
         [] { fast::face_loop_gouraud(fast::vertex_lights); }},
        {"zlight", plain::face_loop_zlight, fast::face_loop_zlight},
    };
    return pairs;
}

constexpr int triangles_wanted = is_sanitized ? 100'000 : 1'200'000;

/// Says which pixel differs first.
std::string first_difference(const LoopResult &plain_result, const LoopResult &fast_result, int width) {
    for (std::size_t i = 0; i < plain_result.frame.pixels.size(); ++i) {
        if (plain_result.frame.pixels[i] != fast_result.frame.pixels[i]) {
            return "pixel " + std::to_string(i % static_cast<std::size_t>(width)) + ", " +
                   std::to_string(i / static_cast<std::size_t>(width)) + " is " +
                   std::to_string(fast_result.frame.pixels[i]) + " instead of " +
                   std::to_string(plain_result.frame.pixels[i]);
        }
    }
    return "no pixel, but a depth, a colour or a count";
}

} // namespace

TEST(FastFaceLoops, EqualThePlainOnes) {
    const std::vector<std::int64_t> sets = instruction_sets();
    ASSERT_FALSE(sets.empty());
    Random random(20240611);
    int triangles = 0;
    int drawn = 0;
    for (std::size_t scene = 0; triangles < triangles_wanted; ++scene) {
        const FrameSize size = frame_sizes[scene % frame_sizes.size()];
        const Shapes shapes = random.once_in(3) ? all_shapes[scene % all_shapes.size()] : Shapes::small;
        const bool is_large = shapes != Shapes::small && size.width * size.height > 20'000;
        open_noisy_frame(size, random);
        const int made = make_random_object(shapes, is_large ? 60 : 1500, random);
        viewer = ViewerState{};
        viewer.doubleside = random.once_in(3) ? 1 : 0;
        viewer.flip = random.below(3);
        viewer.light = {random.between(-3.0F, 3.0F), random.between(-3.0F, 3.0F),
                        random.between(-3.0F, 3.0F)};
        const std::size_t pair_index = scene % loop_pairs().size();
        const LoopPair &pair = loop_pairs()[pair_index];
        const LoopResult expected = run_loop(pair.plain);
        const std::int64_t set = sets[scene / 3 % sets.size()];
        use_instruction_set(set);
        const LoopResult actual = run_loop(pair.fast);
        ASSERT_TRUE(expected == actual)
            << pair.name << " on " << instruction_set_name(set) << ", scene " << scene << ", " << size.width
            << " x " << size.height << ", shapes " << static_cast<int>(shapes) << ": "
            << first_difference(expected, actual, size.width);
        triangles += made;
        drawn += expected.triangles;
    }
    use_instruction_set(0);
    EXPECT_GE(triangles, triangles_wanted);
    // If all triangles of a scene were culled, it would compare nothing.
    EXPECT_GT(drawn, triangles / 4);
}

TEST(FastFaceLoops, DrawNothingOfAnObjectWithoutPoints) {
    Random random(11);
    open_noisy_frame({320, 256}, random);
    make_random_object(Shapes::any, 300, random);
    point_chunk_bytes = 0;
    viewer = ViewerState{};
    viewer.doubleside = 1;
    const FrameContents empty = frame_contents();
    for (const LoopPair &pair : loop_pairs()) {
        const LoopResult expected = run_loop(pair.plain);
        EXPECT_GT(expected.faces, 0);
        EXPECT_EQ(expected.triangles, 0) << pair.name;
        EXPECT_TRUE(expected.frame == empty) << pair.name;
        for (const std::int64_t set : instruction_sets()) {
            use_instruction_set(set);
            EXPECT_TRUE(run_loop(pair.fast) == expected) << pair.name << " on " << instruction_set_name(set);
        }
    }
    use_instruction_set(0);
}
