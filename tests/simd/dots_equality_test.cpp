// SPDX-License-Identifier: MIT
// Tests that the fast dots add exactly what the plain ones add.
#include "raster/dots.h"

#include "core/sanitized.h"
#include "pipeline/dots_effect.h"
#include "pipeline/rotation.h"
#include "pipeline/sine_table.h"
#include "random_scene.h"
#include "support/instruction_sets.h"

#include "display/frame_buffers.h"
#include "object/model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr int dots_wanted = is_sanitized ? 100'000 : 1'200'000;

/// Dots, with room for a vector after the last one.
struct Dots {
    std::vector<float> x;
    std::vector<float> y;
    std::vector<float> radius;
};

Dots random_dots(std::size_t count, Random &random) {
    Dots dots;
    const auto coordinate = [&random](int size) {
        return random.once_in(50) ? random.wild_number()
                                  : random.between(-12.0F, static_cast<float>(size) + 12.0F);
    };
    for (std::size_t i = 0; i < count + 16; ++i) {
        dots.x.push_back(coordinate(frame_width));
        dots.y.push_back(coordinate(frame_height));
        dots.radius.push_back(random.once_in(50)   ? random.wild_number()
                              : random.once_in(20) ? random.between(0.0F, 90.0F)
                                                   : random.between(0.4F, 4.0F));
    }
    return dots;
}

FrameContents plotted(const FrameContents &before,
                      void (*plot)(const float *, const float *, const float *, std::size_t),
                      const Dots &dots, std::size_t count) {
    restore_frame(before);
    plot(dots.x.data(), dots.y.data(), dots.radius.data(), count);
    return frame_contents();
}

} // namespace

TEST(FastDots, EqualThePlainOnes) {
    const std::vector<std::int64_t> sets = instruction_sets();
    Random random(5);
    int dots_plotted = 0;
    for (std::size_t scene = 0; dots_plotted < dots_wanted; ++scene) {
        const FrameSize size = frame_sizes[scene % frame_sizes.size()];
        open_noisy_frame(size, random);
        viewer = ViewerState{};
        viewer.clear_style = random.below(2);
        viewer.dot_lum = random.once_in(10)  ? static_cast<std::int32_t>(random.bits())
                         : random.once_in(4) ? random.below(131073)
                                             : 25600;
        const auto count = static_cast<std::size_t>(random.below(1500));
        const Dots dots = random_dots(count, random);
        const FrameContents before = frame_contents();
        const FrameContents expected = plotted(before, plain::plot_dots, dots, count);
        const std::int64_t set = sets[scene / frame_sizes.size() % sets.size()];
        use_instruction_set(set);
        const FrameContents actual = plotted(before, fast::plot_dots, dots, count);
        ASSERT_TRUE(expected == actual) << "on " << instruction_set_name(set) << ", scene " << scene << ", "
                                        << size.width << " x " << size.height;
        dots_plotted += static_cast<int>(count);
    }
    use_instruction_set(0);
}

TEST(FastDots, WriteNothingPastTheEndOfTheFrame) {
    const std::vector<std::int64_t> sets = instruction_sets();
    Random random(7);
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    for (int width = 1; width <= 40; ++width) {
        open_noisy_frame({width, 33}, random);
        viewer = ViewerState{};
        Dots dots = random_dots(2000, random);
        std::fill(dots.y.begin(), dots.y.end(), 26.0F);
        // The frame ends where its memory ends.
        void *memory = mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        ASSERT_NE(memory, MAP_FAILED);
        ASSERT_EQ(mprotect(static_cast<char *>(memory) + page, page, PROT_NONE), 0);
        chunkybuf1.reset(static_cast<std::uint8_t *>(memory) + page - frame_pixels());
        for (const std::int64_t set : sets) {
            use_instruction_set(set);
            fast::plot_dots(dots.x.data(), dots.y.data(), dots.radius.data(), 2000);
        }
        (void)chunkybuf1.release();
        munmap(memory, 2 * page);
    }
    use_instruction_set(0);
}

TEST(FastDots, LieAtThePointsLikeThePlainOnes) {
    Random random(6);
    for (int scene = 0; scene < 40; ++scene) {
        open_noisy_frame({320, 256}, random);
        viewer = ViewerState{};
        make_random_object(scene % 4 == 0 ? Shapes::wild : Shapes::any, 5000, random);
        const FrameContents before = frame_contents();
        plain::plot_dots_at_points();
        const FrameContents expected = frame_contents();
        restore_frame(before);
        fast::plot_dots_at_points();
        ASSERT_TRUE(expected == frame_contents()) << "scene " << scene;
    }
}

TEST(FastDots, FollowTheEffectsCurveLikeThePlainOnes) {
    const std::vector<std::int64_t> sets = instruction_sets();
    Random random(8);
    build_sine_table();
    for (std::size_t scene = 0; scene < 200; ++scene) {
        open_noisy_frame(frame_sizes[scene % 4], random);
        viewer = ViewerState{};
        viewer.spin_angle = random.once_in(10) ? static_cast<double>(random.wild_number())
                                               : static_cast<double>(random.between(-4e4F, 4e4F));
        set_rotation(random.between(-9.0F, 9.0F), random.between(-9.0F, 9.0F), random.between(-9.0F, 9.0F));
        const FrameContents before = frame_contents();
        const std::int32_t expected_dots = plain::plot_effect_curve();
        const FrameContents expected = frame_contents();
        restore_frame(before);
        use_instruction_set(sets[scene % sets.size()]);
        ASSERT_EQ(expected_dots, fast::plot_effect_curve());
        ASSERT_TRUE(expected == frame_contents()) << "scene " << scene;
    }
    use_instruction_set(0);
}
