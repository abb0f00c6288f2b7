// SPDX-License-Identifier: MIT
// Tests that the fast face loops draw exactly what the plain ones draw.
#include "raster/face_loops.h"

#include "core/forms.h"
#include "core/sanitized.h"
#include "display/frame_buffers.h"
#include "object/model.h"
#include "pipeline/lighting.h"
#include "pipeline/render_frame.h"
#include "pipeline/sine_table.h"
#include "random_scene.h"
#include "raster/simd/bands.h"
#include "raster/simd/triangle_store.h"
#include "support/instruction_sets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

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

/// Has frames drawn in bands, and puts back what was.
class InBands {
public:
    explicit InBands(fast::BandSizes sizes) {
        fast::band_sizes = sizes;
        keeps_depths = true;
    }
    ~InBands() {
        fast::band_sizes = sizes_before_;
        keeps_depths = false;
    }
    InBands(const InBands &) = delete;
    InBands &operator=(const InBands &) = delete;

private:
    fast::BandSizes sizes_before_ = fast::band_sizes;
};

/// Every frame in bands of random size, from one row on. The bands begin with cleared depths, so `zbuf` does
/// too.
std::unique_ptr<InBands> in_random_bands(Random &random) {
    std::fill_n(zbuf.get(), frame_pixels(), std::uint16_t{0});
    const std::array<std::size_t, 4> most{100, 3000, 20'000, fast::most_band_pixels};
    const std::size_t chosen = most[static_cast<std::size_t>(random.below(4))];
    return std::make_unique<InBands>(
        fast::BandSizes{0, 1 + static_cast<std::size_t>(random.below(static_cast<int>(chosen)))});
}

/// Makes an object of one double-sided triangle, whose points the test sets. Returns the frame before it is
/// drawn.
FrameContents make_one_triangle(Random &random) {
    make_random_object(Shapes::any, 1, random);
    constexpr std::array<std::uint16_t, 5> list{3, 0, 1, 2, 1};
    polygon_chunk = allocate_array<std::uint16_t>(list.size());
    std::copy(list.begin(), list.end(), polygon_chunk.get());
    polygon_chunk_bytes = sizeof list;
    viewer = ViewerState{};
    viewer.doubleside = 1;
    return frame_contents();
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

/// Expects every loop to equal the plain one on every instruction set. Returns how many plain loops changed
/// the frame.
int expect_equal_loops(const std::function<std::string()> &scene, const FrameContents &before) {
    int changed = 0;
    for (const LoopPair &pair : loop_pairs()) {
        const LoopResult expected = run_loop(pair.plain);
        changed += expected.frame == before ? 0 : 1;
        for (const std::int64_t set : instruction_sets()) {
            use_instruction_set(set);
            const LoopResult actual = run_loop(pair.fast);
            EXPECT_TRUE(actual == expected)
                << scene() << ": " << pair.name << " on " << instruction_set_name(set) << ": "
                << first_difference(expected, actual, frame_width);
        }
        use_instruction_set(0);
    }
    return changed;
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
        const auto bands = random.once_in(2) ? in_random_bands(random) : nullptr;
        const LoopResult expected = run_loop(pair.plain);
        const std::int64_t set = sets[scene / 3 % sets.size()];
        use_instruction_set(set);
        const LoopResult actual = run_loop(pair.fast);
        ASSERT_TRUE(expected == actual)
            << pair.name << " on " << instruction_set_name(set) << ", scene " << scene << ", " << size.width
            << " x " << size.height << ", shapes " << static_cast<int>(shapes)
            << (bands ? ", in bands: " : ": ") << first_difference(expected, actual, size.width);
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

TEST(FastFaceLoops, DrawTrianglesOfAnyHeightInBands) {
    using Limits = std::numeric_limits<float>;
    const std::vector<float> heights{
        Limits::quiet_NaN(), -Limits::infinity(), -1e9F, 9.5F, 20.0F, 20.4F, 31.0F, 1e9F, Limits::infinity()};
    Random random(3);
    open_noisy_frame({64, 40}, random);
    std::fill_n(zbuf.get(), frame_pixels(), std::uint16_t{0});
    const FrameContents empty = make_one_triangle(random);
    const InBands one_row_each({0, 64});
    int drawn = 0;
    for (const float a : heights) {
        for (const float b : heights) {
            for (const float c : heights) {
                lwopoints3[0] = {5.0F, a, 50.0F};
                lwopoints3[1] = {40.0F, b, 100.0F};
                lwopoints3[2] = {20.0F, c, 150.0F};
                const LoopResult expected = run_loop(plain::face_loop_zlight);
                drawn += expected.frame == empty ? 0 : 1;
                for (const std::int64_t set : instruction_sets()) {
                    use_instruction_set(set);
                    const LoopResult actual = run_loop(fast::face_loop_zlight);
                    EXPECT_TRUE(actual == expected)
                        << a << " " << b << " " << c << " on " << instruction_set_name(set) << ": "
                        << first_difference(expected, actual, 64);
                }
                use_instruction_set(0);
            }
        }
    }
    EXPECT_GT(drawn, 200);
}

TEST(FastFaceLoops, DrawTrianglesOfAnyDepth) {
    // Up to 255 and beyond, where a depth of 8.8 fits 16 bits no more, and where accumulators wrap.
    const std::vector<float> depths{-40'000.0F, -300.0F, -1.0F,  0.0F,   0.5F,   1.0F,    128.0F,
                                    254.9F,     255.0F,  255.9F, 256.0F, 300.0F, 5000.0F, 32'767.0F};
    Random random(8);
    open_noisy_frame({64, 40}, random);
    const FrameContents before = make_one_triangle(random);
    int drawn = 0;
    for (const float left : depths) {
        for (const float right : depths) {
            lwopoints3[0] = {5.0F, 4.0F, left};
            lwopoints3[1] = {60.0F, 20.0F, right};
            lwopoints3[2] = {8.0F, 35.0F, left};
            drawn += expect_equal_loops([&] { return std::to_string(left) + ", " + std::to_string(right); },
                                        before);
        }
    }
    EXPECT_GT(drawn, 500);
}

TEST(FastFaceLoops, DrawSpansOfAnyLength) {
    // Around the widths of vectors, the buffer of texels, and the largest x.
    const std::vector<int> lengths{1,  2,  3,  4,  5,  7,    8,    9,    15,   16,     17,
                                   31, 32, 33, 63, 64, 4095, 4096, 4097, 8193, 32'700, 40'000};
    Random random(9);
    int drawn = 0;
    for (const int length : lengths) {
        open_noisy_frame({length + 40, 20}, random);
        const FrameContents before = make_one_triangle(random);
        // The middle row is the longest one.
        lwopoints3[0] = {20.0F, 6.0F, 90.0F};
        lwopoints3[1] = {20.5F + static_cast<float>(length), 8.0F, 180.0F};
        lwopoints3[2] = {20.0F, 10.0F, 100.0F};
        drawn += expect_equal_loops([&] { return std::to_string(length); }, before);
    }
    EXPECT_GT(drawn, 80);
}

/// A part of the map: where it begins, and how far it goes from there.
struct MapPart {
    float column;
    float row;
    float width;
    float height;
};

/// Draws a triangle with the loops, whose longest span has this many pixels. Its first pixel is at the start
/// of the part of the map, its last one at the opposite corner. Returns how many plain loops changed the
/// frame.
int expect_equal_spans(int length, const MapPart &part, const FrameContents &before) {
    // The middle row is the longest one.
    const float middle = static_cast<float>(length) + 0.5F;
    lwopoints3[0] = {20.0F, 6.0F, 90.0F};
    lwopoints3[1] = {20.0F + middle, 8.0F, 180.0F};
    lwopoints3[2] = {20.0F, 10.0F, 100.0F};
    // A pixel shows the value of the next one, so that the left edge is one step before the first pixel.
    const auto steps = static_cast<float>(std::max(length - 1, 1));
    const Vec3 step{part.width / steps, part.height / steps, 0.0F};
    const Vec3 first{part.column - step.x, part.row - step.y, 0.0F};
    const Vec3 end{first.x + step.x * middle, first.y + step.y * middle, 0.0F};
    for (Vec3 *records : {lwonormals3.get(), lwopoints2.get()}) {
        records[0] = first;
        records[1] = end;
        records[2] = first;
    }
    const auto scene = [length, &part] {
        return std::to_string(length) + " pixels, " + std::to_string(part.width) + " x " +
               std::to_string(part.height) + " texels from " + std::to_string(part.column) + ", " +
               std::to_string(part.row);
    };
    return expect_equal_loops(scene, before);
}

const std::vector<int> mapped_lengths{1, 3, 8, 11, 16, 17, 33};

TEST(FastFaceLoops, DrawSpansOfAnySizeOnTheMap) {
    // Around the sizes of windows of the map: 2 rows of 8 texels, and 4 rows of 16.
    const std::vector<float> widths{0.0F, 0.9F, 6.5F, 7.0F, 7.5F, 8.5F, 14.5F, 15.0F, 15.5F, 17.0F};
    const std::vector<float> heights{0.0F, 0.5F, 1.0F, 1.5F, 2.5F, 3.0F, 3.5F, 5.0F};
    Random random(10);
    open_noisy_frame({64, 40}, random);
    const FrameContents before = make_one_triangle(random);
    int drawn = 0;
    for (const int length : mapped_lengths) {
        for (const float width : widths) {
            for (const float height : heights) {
                const MapPart part{random.between(-140.0F, 140.0F), random.between(-140.0F, 140.0F),
                                   random.once_in(2) ? width : -width, random.once_in(2) ? height : -height};
                drawn += expect_equal_spans(length, part, before);
            }
        }
    }
    EXPECT_GT(drawn, 2000);
}

TEST(FastFaceLoops, DrawSpansThatGoOnAtTheStartOfTheMap) {
    Random random(11);
    open_noisy_frame({64, 40}, random);
    const FrameContents before = make_one_triangle(random);
    int drawn = 0;
    for (const int length : mapped_lengths) {
        for (const auto &[columns, rows] : {std::pair{8.0F, 2.0F}, std::pair{16.0F, 4.0F}}) {
            // A window of this size whose last texel is the map's last one, and those around it.
            for (const float right : {-2.0F, -1.0F, 0.0F, 1.0F, 2.0F}) {
                for (const float down : {-1.0F, 0.0F, 1.0F}) {
                    const MapPart part{128.0F - columns + right + 0.05F, 128.0F - rows + down + 0.05F,
                                       columns - 1.02F, rows - 1.02F};
                    drawn += expect_equal_spans(length, part, before);
                }
            }
        }
    }
    EXPECT_GT(drawn, 800);
}

TEST(FastFaceLoops, DrawObjectsInBandsThatTheStoreIsTooSmallFor) {
    constexpr FrameSize size{640, 480};
    constexpr int polygons = 130'000;
    static_assert(polygons > fast::TriangleStore::capacity * fast::TriangleBatch::capacity);
    Random random(77);
    open_noisy_frame(size, random);
    make_random_object(Shapes::small, polygons, random);
    viewer = ViewerState{};
    viewer.doubleside = 1;
    std::fill_n(zbuf.get(), frame_pixels(), std::uint16_t{0});
    const InBands bands({0, 20'000});
    for (const LoopPair &pair : loop_pairs()) {
        const LoopResult expected = run_loop(pair.plain);
        EXPECT_GT(expected.triangles, polygons);
        for (const std::int64_t set : instruction_sets()) {
            use_instruction_set(set);
            const LoopResult actual = run_loop(pair.fast);
            EXPECT_TRUE(actual == expected) << pair.name << " on " << instruction_set_name(set) << ": "
                                            << first_difference(expected, actual, size.width);
        }
    }
    use_instruction_set(0);
}

TEST(FastFaceLoops, DrawFramesInBandsThatAreLargerThanCommonCaches) {
    for (const auto &[size, expected] : std::vector<std::pair<FrameSize, bool>>{{{640, 480}, false},
                                                                                {{1024, 1024}, false},
                                                                                {{1025, 1024}, true},
                                                                                {{1920, 1080}, true},
                                                                                {{12, 100'000}, false},
                                                                                {{65'536, 17}, true},
                                                                                {{65'537, 17}, false}}) {
        frame_width = size.width;
        frame_height = size.height;
        EXPECT_EQ(fast::draws_in_bands(), expected) << size.width << " x " << size.height;
    }
}

TEST(LargeFrames, NeedNoClearedDepthsAndKeepThemOnRequest) {
    constexpr FrameSize size{1300, 900};
    Random random(5);
    for (const bool keeps : {false, true}) {
        for (std::int32_t mode = mode_envmap; mode <= mode_zlight; ++mode) {
            open_noisy_frame(size, random);
            build_sine_table();
            make_random_object(Shapes::any, 60, random);
            viewer = ViewerState{};
            viewer.obj_style = mode;
            const FrameContents before = frame_contents();
            draws_fast = false;
            render_frame();
            const FrameContents expected = frame_contents();
            restore_frame(before);
            draws_fast = true;
            keeps_depths = keeps;
            render_frame();
            keeps_depths = false;
            const FrameContents actual = frame_contents();
            EXPECT_TRUE(actual.pixels == expected.pixels) << "mode " << mode;
            EXPECT_TRUE(expected.depths != before.depths);
            if (!keeps) {
                EXPECT_TRUE(actual.depths == before.depths) << "mode " << mode;
                continue;
            }
            // The rows at the edges, in which nothing is drawn, keep what they held.
            const auto first = static_cast<std::ptrdiff_t>(first_drawn_row) * size.width;
            const auto last = static_cast<std::ptrdiff_t>(size.height - first_drawn_row + 1) * size.width;
            EXPECT_TRUE(std::equal(actual.depths.begin() + first, actual.depths.begin() + last,
                                   expected.depths.begin() + first))
                << "mode " << mode;
        }
    }
}
