// SPDX-License-Identifier: MIT
// Tests that fast fades and blurs write exactly what the plain ones write.
#include "pipeline/clearing.h"

#include "core/forms.h"
#include "core/sanitized.h"
#include "display/frame_buffers.h"
#include "random_scene.h"
#include "support/instruction_sets.h"

#include <gtest/gtest.h>

namespace {

constexpr int rows_wanted = is_sanitized ? 100'000 : 1'200'000;

FrameContents cleared(const FrameContents &before, bool is_fast) {
    restore_frame(before);
    draws_fast = is_fast;
    clear_frame();
    draws_fast = true;
    return frame_contents();
}

} // namespace

TEST(FastClearing, EqualsThePlainOne) {
    const std::vector<std::int64_t> sets = instruction_sets();
    Random random(9);
    int rows = 0;
    for (std::size_t scene = 0; rows < rows_wanted; ++scene) {
        const FrameSize size{1 + random.below(random.once_in(10) ? 400 : 70), 1 + random.below(200)};
        open_noisy_frame(size, random);
        viewer = ViewerState{};
        use_instruction_set(sets[scene % sets.size()]);
        const FrameContents before = frame_contents();
        for (const int style : {1, 2, 3}) {
            viewer.clear_style = style;
            ASSERT_TRUE(cleared(before, false) == cleared(before, true))
                << "style " << style << " on " << instruction_set_name(sets[scene % sets.size()]) << ", "
                << size.width << " x " << size.height;
            rows += size.height;
        }
    }
    use_instruction_set(0);
}

TEST(FastClearing, FadesEveryBrightnessLikeThePlainOne) {
    Random random(10);
    open_noisy_frame({256, 4}, random);
    viewer = ViewerState{};
    viewer.clear_style = 1;
    for (std::size_t i = 0; i < frame_pixels(); ++i) {
        chunkybuf2[i] = static_cast<std::uint8_t>(i);
    }
    const FrameContents before = frame_contents();
    EXPECT_TRUE(cleared(before, false) == cleared(before, true));
    EXPECT_EQ(chunkybuf1[200], 200 - 12 - 1);
}

TEST(FastClearing, EqualsThePlainOneOnAFrameThatItReadsAndWrites) {
    Random random(11);
    open_noisy_frame({64, 40}, random);
    const FrameContents before = frame_contents();
    draws_fast = false;
    blur_frame(chunkybuf1.get(), 2, chunkybuf1.get(), 2);
    const FrameContents expected = frame_contents();
    restore_frame(before);
    draws_fast = true;
    blur_frame(chunkybuf1.get(), 2, chunkybuf1.get(), 2);
    EXPECT_TRUE(expected == frame_contents());
}
