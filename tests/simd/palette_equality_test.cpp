// SPDX-License-Identifier: MIT
// Tests that both forms of palette expansion write the same pixels, and nothing after them.
#include "core/sanitized.h"
#include "platform/shared/bitmap.h"
#include "random_scene.h"
#include "support/instruction_sets.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr std::size_t pixels_wanted = is_sanitized ? 100'000 : 1'200'000;

/// Greys, greys but for one channel of one entry, or colours.
host::Palette random_palette(Random &random) {
    host::Palette palette{};
    const bool has_colours = random.once_in(3);
    for (host::Colour &colour : palette) {
        colour.fill(static_cast<std::uint8_t>(random.bits()));
        if (has_colours) {
            colour[1] = static_cast<std::uint8_t>(random.bits());
        }
    }
    if (random.once_in(3)) {
        palette[static_cast<std::size_t>(random.below(256))][static_cast<std::size_t>(random.below(3))] ^= 1;
    }
    return palette;
}

/// Runs of equal indices, many of them single ones.
std::vector<std::uint8_t> random_indices(std::size_t count, Random &random) {
    std::vector<std::uint8_t> indices;
    while (indices.size() < count) {
        const std::size_t run = random.once_in(8) ? static_cast<std::size_t>(random.below(200)) : 1;
        indices.insert(indices.end(), std::min(run, count - indices.size()),
                       static_cast<std::uint8_t>(random.bits()));
    }
    return indices;
}

} // namespace

TEST(FastPaletteExpansion, EqualsThePlainOne) {
    const std::vector<std::int64_t> sets = instruction_sets();
    Random random(12);
    std::size_t pixels = 0;
    for (std::size_t picture = 0; pixels < pixels_wanted; ++picture) {
        const auto count = static_cast<std::size_t>(random.below(random.once_in(10) ? 3000 : 200));
        const std::vector<std::uint8_t> indices = random_indices(count, random);
        const host::TrueColours colours = host::true_colours(random_palette(random));
        // What follows the pixels must stay as it is.
        std::vector<std::uint32_t> expected(count + 100, 7);
        std::vector<std::uint32_t> actual = expected;
        host::plain::expand_pixels(indices.data(), expected.data(), count, colours);
        use_instruction_set(sets[picture % sets.size()]);
        host::fast::expand_pixels(indices.data(), actual.data(), count, colours);
        ASSERT_EQ(expected, actual) << "on " << instruction_set_name(sets[picture % sets.size()]) << ", "
                                    << count << " pixels, grey: " << colours.are_grey;
        pixels += count;
    }
    use_instruction_set(0);
}

TEST(FastPaletteExpansion, LooksEveryLevelUp) {
    std::vector<std::uint8_t> indices(256);
    host::Palette palette{};
    for (std::size_t i = 0; i < indices.size(); ++i) {
        indices[i] = static_cast<std::uint8_t>(i);
        palette[i].fill(static_cast<std::uint8_t>(i * 167 + 5));
    }
    const host::TrueColours colours = host::true_colours(palette);
    ASSERT_TRUE(colours.are_grey);
    for (const std::int64_t set : instruction_sets()) {
        use_instruction_set(set);
        std::vector<std::uint32_t> pixels(indices.size());
        host::fast::expand_pixels(indices.data(), pixels.data(), pixels.size(), colours);
        EXPECT_TRUE(std::equal(pixels.begin(), pixels.end(), colours.of_index.begin()))
            << instruction_set_name(set);
    }
    use_instruction_set(0);
}
