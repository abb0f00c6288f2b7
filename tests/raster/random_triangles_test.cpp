// SPDX-License-Identifier: MIT
// Compares the triangle fillers with the reference walk on thousands of random triangles, and checks that
// extreme ones stay inside the frame.
#include "raster/reference_triangle_walker.h"
#include "raster/texture_map.h"
#include "support/frame_copies.h"
#include "support/model_builder.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

namespace {

constexpr int width = 70;
constexpr int height = 53;

struct FillerUnderTest {
    const char *name;
    Filler kind;
    void (*fill)(TriangleParams *);
};

constexpr std::array<FillerUnderTest, 4> fillers{{{"zcolour", Filler::zcolour, fill_tri_zcolour},
                                                  {"flat", Filler::flat, fill_tri_flat},
                                                  {"gouraud", Filler::gouraud, fill_tri_gouraud},
                                                  {"mapped", Filler::mapped, fill_tri_mapped}}};

class RandomTriangles : public testing::Test {
protected:
    void SetUp() override {
        reset_program_state();
        set_frame(width, height);
        for (int i = 0; i < envmap_bytes; ++i) {
            envmap[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(random());
        }
    }

    float between(float low, float high) { return std::uniform_real_distribution<float>(low, high)(random); }

    /// Whole numbers, so that flat tops, flat bottoms, vertical edges and coinciding vertices are frequent.
    float whole_between(int low, int high) {
        return static_cast<float>(std::uniform_int_distribution<int>(low, high)(random));
    }

    /// A triangle with these positions, and with depths, colours and map coordinates as the face loops make
    /// them.
    TriangleParams at(const std::function<float()> &x, const std::function<float()> &y) {
        TriangleParams block{};
        for (std::size_t v = 0; v < 3; ++v) {
            block[3 * v] = x();
            block[3 * v + 1] = y();
            block[3 * v + 2] = between(0, 255);
            block[9 + v] = between(25, 255);
            block[12 + 2 * v] = between(-123, 123);
            block[13 + 2 * v] = between(-123, 123);
        }
        return block;
    }

    /// Draws triangles on top of one another with every filler and with the reference, and compares after
    /// each.
    void compare(int triangles, const std::function<TriangleParams()> &next) {
        int drawn = 0;
        for (const FillerUnderTest &filler : fillers) {
            ReferenceFrame expected(width, height);
            blank_frame();
            for (int i = 0; i < triangles; ++i) {
                const TriangleParams given = next();
                TriangleParams block = given;
                TriangleParams expected_block = given;
                const std::vector<std::uint8_t> before = frame_bytes();
                filler.fill(&block);
                walk_triangle(expected, expected_block, filler.kind, envmap.get());
                drawn += frame_bytes() != before ? 1 : 0;
                ASSERT_TRUE(frame_bytes() == expected.pixels && frame_depths() == expected.depths)
                    << filler.name << " differs on triangle " << i << ": " << testing::PrintToString(given);
                ASSERT_EQ(block, expected_block) << filler.name;
                if (i % 16 == 15) {
                    blank_frame();
                    expected = ReferenceFrame(width, height);
                }
            }
        }
        EXPECT_GT(drawn, triangles / 4) << "too few triangles are visible";
    }

    std::mt19937 random{20050223};
};

} // namespace

TEST_F(RandomTriangles, OnTheFrameMatchTheReferenceWalk) {
    compare(2000, [this] {
        return at([this] { return between(0, width - 1); }, [this] { return between(0, height - 1); });
    });
}

TEST_F(RandomTriangles, AcrossTheFramesEdgesMatchTheReferenceWalk) {
    compare(2000, [this] {
        return at([this] { return between(-150, 200); }, [this] { return between(-90, 140); });
    });
}

TEST_F(RandomTriangles, OnAGridWithDegenerateOnesMatchTheReferenceWalk) {
    compare(3000, [this] {
        return at([this] { return whole_between(-3, 6) * 10.0F; },
                  [this] { return whole_between(-1, 7) * 7.5F; });
    });
}

TEST_F(RandomTriangles, SliversMatchTheReferenceWalk) {
    compare(1000, [this] {
        const float y = between(0, height);
        return at([this] { return between(0, width - 1); }, [this, y] { return y + between(0, 1.5F); });
    });
}

TEST_F(RandomTriangles, FarBeyondTheFrameMatchTheReferenceWalk) {
    compare(60, [this] {
        return at([this] { return between(-30000, 30000); }, [this] { return between(-20000, 20000); });
    });
}

TEST_F(RandomTriangles, WithSaturatingPositionsMatchTheReferenceWalk) {
    compare(12, [this] {
        return at([this] { return between(-2e6F, 2e6F); }, [this] { return between(-1e5F, 1e5F); });
    });
}

TEST_F(RandomTriangles, WithValuesOutOfRangeMatchTheReferenceWalk) {
    compare(500, [this] {
        TriangleParams block = at([this] { return between(-20, 90); }, [this] { return between(-20, 70); });
        for (std::size_t v = 0; v < 3; ++v) {
            block[3 * v + 2] = between(-40000, 40000);
            block[9 + v] = between(-40000, 40000);
            block[12 + 2 * v] = between(-40000, 40000);
            block[13 + 2 * v] = between(-40000, 40000);
        }
        return block;
    });
}

TEST_F(RandomTriangles, HostileNumbersStayOnTheDrawnRows) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const std::array<float, 16> hostile{std::numeric_limits<float>::quiet_NaN(),
                                        infinity,
                                        -infinity,
                                        1e9F,
                                        -1e9F,
                                        2147483647.0F,
                                        -2147483648.0F,
                                        std::numeric_limits<float>::max(),
                                        std::numeric_limits<float>::lowest(),
                                        std::numeric_limits<float>::denorm_min(),
                                        0.0F,
                                        -0.0F,
                                        20.0F,
                                        30.5F,
                                        40.0F,
                                        32768.0F};
    constexpr std::size_t guard = 4096;
    constexpr std::uint8_t guard_byte = 0xA5;
    chunkybuf1 = allocate_array<std::uint8_t>(frame_pixels() + guard);
    zbuf = allocate_array<std::uint16_t>(frame_pixels() + guard);
    const auto first_drawn = static_cast<std::size_t>(6 * width);
    const auto behind_drawn = static_cast<std::size_t>((height - 5) * width);
    std::fill_n(chunkybuf1.get(), first_drawn, guard_byte);
    std::fill_n(chunkybuf1.get() + behind_drawn, frame_pixels() + guard - behind_drawn, guard_byte);

    for (int i = 0; i < 20000; ++i) {
        TriangleParams block{};
        for (float &slot : block) {
            slot = hostile[std::uniform_int_distribution<std::size_t>(0, hostile.size() - 1)(random)];
        }
        for (const FillerUnderTest &filler : fillers) {
            TriangleParams copy = block;
            filler.fill(&copy);
        }
    }
    for (std::size_t i = 0; i < frame_pixels() + guard; ++i) {
        if (i < first_drawn || i >= behind_drawn) {
            ASSERT_EQ(chunkybuf1[i], guard_byte) << i;
            ASSERT_EQ(zbuf[i], 0) << i;
        }
    }
}

TEST_F(RandomTriangles, OfTheLargestHeightAreDrawnCorrectlyInBoundedTime) {
    // From the smallest row to the largest, with the middle vertex at (30, 0). A walk would take four
    // thousand million rows.
    TriangleParams block{10, -2147483648.0F, 50, 10, 2147483520.0F, 50, 30, 0, 50};
    block[9] = 200;
    fill_tri_flat(&block);
    // The lower short edge moves by a hundred-millionth of a pixel per row, which is 0 in 16.16.
    EXPECT_EQ(lit_columns(6), columns(10, 29));
    EXPECT_EQ(lit_columns(height - 6), columns(10, 29));
    EXPECT_EQ(lit_columns(5), std::vector<int>{});
    EXPECT_EQ(lit_columns(height - 5), std::vector<int>{});
}
