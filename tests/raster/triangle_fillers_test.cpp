// SPDX-License-Identifier: MIT
// Tests of the triangle fillers on triangles whose pixels can be computed by hand.
#include "raster/triangle_fillers.h"

#include "raster/texture_map.h"
#include "support/frame_copies.h"
#include "support/model_builder.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <limits>

namespace {

/// Draws into a frame of 64 x 48, whose drawn rows are 6 to 42.
class TriangleFillers : public testing::Test {
protected:
    void SetUp() override {
        reset_program_state();
        set_frame(64, 48);
    }
};

struct Corner {
    float x;
    float y;
    float depth;
};

TriangleParams triangle(const Corner &a, const Corner &b, const Corner &c) {
    return {a.x, a.y, a.depth, b.x, b.y, b.depth, c.x, c.y, c.depth};
}

void fill_flat(const Corner &a, const Corner &b, const Corner &c, float colour) {
    TriangleParams block = triangle(a, b, c);
    block[9] = colour;
    fill_tri_flat(&block);
}

void fill_zcolour(const Corner &a, const Corner &b, const Corner &c) {
    TriangleParams block = triangle(a, b, c);
    fill_tri_zcolour(&block);
}

/// A triangle whose left edge is at x = 10.0 and whose right edge is at x = 13.0 in row 13.
constexpr std::array<std::array<float, 2>, 3> wedge{{{10, 10}, {16, 16}, {10, 22}}};

Corner wedge_corner(std::size_t vertex, float depth_value) {
    return {wedge[vertex][0], wedge[vertex][1], depth_value};
}

} // namespace

TEST_F(TriangleFillers, EveryVertexOrderDrawsTheSamePixelsAndLeavesTheBlockSortedByY) {
    struct Case {
        const char *name;
        void (*fill)(TriangleParams *);
        bool moves_colours;
        bool moves_map;
    };
    const std::array<Case, 4> cases{{{"zcolour", fill_tri_zcolour, false, false},
                                     {"flat", fill_tri_flat, false, false},
                                     {"gouraud", fill_tri_gouraud, true, false},
                                     {"mapped", fill_tri_mapped, false, true}}};
    const std::array<Corner, 3> corners{{{30, 8.5F, 60}, {10, 20.25F, 90}, {50, 36.75F, 120}}};
    const std::array<float, 3> colours{200, 100, 40};
    const std::array<std::array<float, 2>, 3> map{{{-100, -90}, {20, 30}, {110, -15}}};
    const std::array<std::array<std::size_t, 3>, 6> orders{
        {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}}};
    for (int i = 0; i < envmap_bytes; ++i) {
        envmap[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(i * 7 / 256 + i * 3 + 1);
    }

    for (const Case &filler : cases) {
        std::vector<std::uint8_t> first_frame;
        std::vector<std::uint16_t> first_depths;
        for (const auto &order : orders) {
            SCOPED_TRACE(testing::Message() << filler.name << ' ' << order[0] << order[1] << order[2]);
            blank_frame();
            TriangleParams block{};
            for (std::size_t i = 0; i < 3; ++i) {
                const std::size_t vertex = order[i];
                block[3 * i] = corners[vertex].x;
                block[3 * i + 1] = corners[vertex].y;
                block[3 * i + 2] = corners[vertex].depth;
                block[9 + i] = filler.moves_colours ? colours[vertex] : colours[i];
                block[12 + 2 * i] = filler.moves_map ? map[vertex][0] : map[i][0];
                block[13 + 2 * i] = filler.moves_map ? map[vertex][1] : map[i][1];
            }
            filler.fill(&block);

            const TriangleParams sorted{30,  8.5F, 60, 10,   20.25F, 90, 50, 36.75F, 120,
                                        200, 100,  40, -100, -90,    20, 30, 110,    -15};
            EXPECT_EQ(block, sorted);
            if (first_frame.empty()) {
                first_frame = frame_bytes();
                first_depths = frame_depths();
                EXPECT_NE(first_depths, std::vector<std::uint16_t>(frame_pixels()));
            }
            EXPECT_EQ(frame_bytes(), first_frame);
            EXPECT_EQ(frame_depths(), first_depths);
        }
    }
}

TEST_F(TriangleFillers, VerticesOfEqualYKeepTheirOrder) {
    TriangleParams block = triangle({30, 20, 1}, {10, 20, 2}, {20, 20, 3});
    const TriangleParams before = block;
    fill_tri_zcolour(&block);
    EXPECT_EQ(block, before);
}

TEST_F(TriangleFillers, TriangleInOneRowDrawsNothing) {
    fill_flat({10, 20, 100}, {30, 20, 100}, {20, 20, 100}, 200);
    EXPECT_TRUE(lit_rows().empty());
}

TEST_F(TriangleFillers, FlatTopBeginsARowBelowItsTop) {
    // The sides approach each other by half a pixel per row and side: 10.5 to 19.5 in row 11, 14.5 to 15.5 in
    // row 19, and they meet in row 20.
    fill_flat({10, 10, 100}, {20, 10, 100}, {15, 20, 100}, 200);
    EXPECT_EQ(lit_columns(10), std::vector<int>{});
    EXPECT_EQ(lit_columns(11), columns(10, 18));
    EXPECT_EQ(lit_columns(12), columns(11, 18));
    EXPECT_EQ(lit_columns(19), columns(14, 14));
    EXPECT_EQ(lit_columns(20), std::vector<int>{});
}

TEST_F(TriangleFillers, FlatTopMayRunFromRightToLeft) {
    fill_flat({20, 10, 100}, {10, 10, 100}, {15, 20, 100}, 200);
    EXPECT_EQ(lit_columns(10), std::vector<int>{});
    EXPECT_EQ(lit_columns(11), columns(10, 18));
    EXPECT_EQ(lit_columns(19), columns(14, 14));
}

TEST_F(TriangleFillers, FlatTopUsesTheGradientOfItsTwoTopVertices) {
    // The value is 40 + x along the top. The left edge crosses row 11 at x = 10.5 with 50.5, which gives 50
    // at x = 10.
    fill_zcolour({10, 10, 50}, {20, 10, 60}, {15, 20, 55});
    for (int x = 10; x <= 18; ++x) {
        EXPECT_EQ(pixel(x, 11), 41 + x) << x;
        EXPECT_EQ(depth(x, 11), (41 + x) * 256) << x;
    }
}

TEST_F(TriangleFillers, FlatTopWithFractionBeginsAfterItsRow) {
    fill_flat({10, 10.75F, 100}, {20, 10.75F, 100}, {10, 20.75F, 100}, 200);
    // The right side is at 19.75 in row 11, a quarter row below the top.
    EXPECT_EQ(lit_columns(10), std::vector<int>{});
    EXPECT_EQ(lit_columns(11), columns(10, 18));
    EXPECT_EQ(lit_columns(12), columns(10, 17));
}

TEST_F(TriangleFillers, PointedTopIsWalkedFromTheRowItLiesIn) {
    // The sides have slopes -1 and 1 from (20, 10.5). They are half a pixel to either side in row 11, and one
    // more in each row below. Extended upwards they cross in row 10.
    fill_flat({20, 10.5F, 100}, {10, 20.5F, 100}, {30, 20.5F, 100}, 200);
    EXPECT_EQ(lit_columns(10), std::vector<int>{});
    EXPECT_EQ(lit_columns(11), columns(19, 19));
    EXPECT_EQ(lit_columns(12), columns(18, 20));
    EXPECT_EQ(lit_columns(20), columns(10, 28));
    EXPECT_EQ(lit_columns(21), std::vector<int>{});
}

TEST_F(TriangleFillers, AlmostFlatTopDrawsTheRowOfItsTwoUpperVerticesByTheUpperEdges) {
    // The middle vertex is half a row below the top, in the same row. In row 10 both edges are at the top
    // vertex. In row 11 the long edge is at x = 10 and the lower edge at 26 - 0.5 x 16 / 16.
    fill_flat({10, 10, 100}, {26, 10.5F, 100}, {10, 26.5F, 100}, 200);
    EXPECT_EQ(lit_columns(10), std::vector<int>{});
    EXPECT_EQ(lit_columns(11), columns(10, 24));
    EXPECT_EQ(lit_columns(12), columns(10, 23));
}

TEST_F(TriangleFillers, FlatBottomEndsWithTheTopHalf) {
    fill_flat({20, 10, 100}, {10, 20, 100}, {30, 20, 100}, 200);
    EXPECT_EQ(lit_columns(15), columns(15, 24));
    EXPECT_EQ(lit_columns(20), columns(10, 29));
    EXPECT_EQ(lit_columns(21), std::vector<int>{});
}

TEST_F(TriangleFillers, LongEdgeContinuesPastTheMiddleVertex) {
    // The long edge is at x = 10 throughout. The other side goes out to 30 in row 20 and back.
    fill_flat({10, 10, 100}, {30, 20, 100}, {10, 30, 100}, 200);
    EXPECT_EQ(lit_columns(19), columns(10, 27));
    EXPECT_EQ(lit_columns(20), columns(10, 29));
    EXPECT_EQ(lit_columns(21), columns(10, 27));
    EXPECT_EQ(lit_columns(29), columns(10, 11));
    EXPECT_EQ(lit_columns(30), std::vector<int>{});
}

TEST_F(TriangleFillers, LastRowIsTheOneTheBottomVertexLiesIn) {
    // In row 20, half a row above the tip at x = 15, the sides are 5 / 21 of a pixel away from it.
    fill_flat({10, 10, 100}, {20, 10, 100}, {15, 20.5F, 100}, 200);
    EXPECT_EQ(lit_columns(20), columns(14, 14));
    EXPECT_EQ(lit_columns(21), std::vector<int>{});
}

TEST_F(TriangleFillers, DrawsOnlyRowsSixToHeightLessSix) {
    fill_flat({10, -20, 100}, {60, 30, 100}, {10, 80, 100}, 200);
    std::vector<int> drawn_rows;
    for (int y = 6; y <= 42; ++y) {
        drawn_rows.push_back(y);
    }
    EXPECT_EQ(lit_rows(), drawn_rows);
}

TEST_F(TriangleFillers, TriangleInTheFirstSixRowsDrawsNothing) {
    fill_flat({10, 0, 100}, {60, 2, 100}, {10, 5.9F, 100}, 200);
    EXPECT_TRUE(lit_rows().empty());
    fill_flat({10, 0, 100}, {60, 2, 100}, {10, 7.9F, 100}, 200);
    EXPECT_EQ(lit_rows(), (std::vector<int>{6, 7}));
}

TEST_F(TriangleFillers, TriangleInTheLastFiveRowsDrawsNothing) {
    fill_flat({10, 42.1F, 100}, {60, 45, 100}, {10, 60, 100}, 200);
    EXPECT_TRUE(lit_rows().empty());
    fill_flat({10, 41.1F, 100}, {60, 45, 100}, {10, 60, 100}, 200);
    EXPECT_EQ(lit_rows(), std::vector<int>{42});
}

TEST_F(TriangleFillers, FrameOfElevenRowsHasNoneToDraw) {
    set_frame(64, 11);
    fill_flat({10, -20, 100}, {60, 5, 100}, {10, 80, 100}, 200);
    EXPECT_TRUE(lit_rows().empty());
    set_frame(64, 12);
    fill_flat({10, -20, 100}, {60, 5, 100}, {10, 80, 100}, 200);
    EXPECT_EQ(lit_rows(), std::vector<int>{6});
}

TEST_F(TriangleFillers, UsesTheOpenDisplaysSizeNotTheSettings) {
    viewer.width = 8;
    viewer.height = 12;
    fill_flat({10, 10, 100}, {30, 20, 100}, {10, 30, 100}, 200);
    EXPECT_EQ(lit_columns(20), columns(10, 29));
}

TEST_F(TriangleFillers, SpanExcludesThePixelOfItsRightEnd) {
    fill_flat(wedge_corner(0, 100), wedge_corner(1, 100), wedge_corner(2, 100), 200);
    EXPECT_EQ(lit_columns(13), columns(10, 12));
}

TEST_F(TriangleFillers, FirstPixelOfASpanGetsTheValueOnePixelToItsRight) {
    // The value is 40 + 2 x.
    fill_zcolour(wedge_corner(0, 60), wedge_corner(1, 72), wedge_corner(2, 60));
    EXPECT_EQ(pixel(10, 13), 40 + 2 * 11);
    EXPECT_EQ(pixel(11, 13), 40 + 2 * 12);
    EXPECT_EQ(pixel(12, 13), 40 + 2 * 13);
}

TEST_F(TriangleFillers, DepthsOfFlatFacesLeadByOnePixelToo) {
    fill_flat(wedge_corner(0, 60), wedge_corner(1, 72), wedge_corner(2, 60), 200);
    EXPECT_EQ(depth(10, 13), (40 + 2 * 11) * 256);
    EXPECT_EQ(depth(12, 13), (40 + 2 * 13) * 256);
}

TEST_F(TriangleFillers, ColoursLeadByOnePixelToo) {
    TriangleParams block = triangle(wedge_corner(0, 100), wedge_corner(1, 100), wedge_corner(2, 100));
    block[9] = 60;
    block[10] = 72;
    block[11] = 60;
    fill_tri_gouraud(&block);
    EXPECT_EQ(pixel(10, 13), 40 + 2 * 11);
    EXPECT_EQ(pixel(12, 13), 40 + 2 * 13);
    EXPECT_EQ(depth(12, 13), 100 * 256);
}

TEST_F(TriangleFillers, MapCoordinatesLeadByOnePixelToo) {
    // The column is x - 10, the row twice that, both counted from the map's centre.
    TriangleParams block = triangle(wedge_corner(0, 100), wedge_corner(1, 100), wedge_corner(2, 100));
    block[14] = 6;
    block[15] = 12;
    envmap[(128 + 2) * 256 + 128 + 1] = 91;
    envmap[(128 + 6) * 256 + 128 + 3] = 93;
    fill_tri_mapped(&block);
    EXPECT_EQ(pixel(10, 13), 91);
    EXPECT_EQ(pixel(11, 13), 0);
    EXPECT_EQ(pixel(12, 13), 93);
}

TEST_F(TriangleFillers, EqualDepthDoesNotOverwrite) {
    zbuf[pixel_index(10, 13)] = 25728;
    zbuf[pixel_index(11, 13)] = 25727;
    zbuf[pixel_index(12, 13)] = 25729;
    fill_flat(wedge_corner(0, 100.5F), wedge_corner(1, 100.5F), wedge_corner(2, 100.5F), 200);
    EXPECT_EQ(pixel(10, 13), 0);
    EXPECT_EQ(depth(10, 13), 25728);
    EXPECT_EQ(pixel(11, 13), 200);
    EXPECT_EQ(depth(11, 13), 25728);
    EXPECT_EQ(pixel(12, 13), 0);
    EXPECT_EQ(depth(12, 13), 25729);
}

TEST_F(TriangleFillers, DepthOfZeroOrLessIsNeverDrawnOnAClearedBuffer) {
    fill_flat(wedge_corner(0, 0), wedge_corner(1, 0), wedge_corner(2, 0), 200);
    fill_flat(wedge_corner(0, -5), wedge_corner(1, -5), wedge_corner(2, -5), 200);
    // Less than 1/256 is depth 0 as well.
    fill_flat(wedge_corner(0, 0.003F), wedge_corner(1, 0.003F), wedge_corner(2, 0.003F), 200);
    EXPECT_TRUE(lit_rows().empty());
}

TEST_F(TriangleFillers, SmallestPositiveDepthIsDrawnOnAClearedBuffer) {
    constexpr float smallest = 1.0F / 256.0F;
    fill_flat(wedge_corner(0, smallest), wedge_corner(1, smallest), wedge_corner(2, smallest), 200);
    EXPECT_EQ(lit_columns(13), columns(10, 12));
    EXPECT_EQ(depth(10, 13), 1);
}

TEST_F(TriangleFillers, DepthsAreComparedUnsigned) {
    fill_flat(wedge_corner(0, 200), wedge_corner(1, 200), wedge_corner(2, 200), 10);
    EXPECT_EQ(depth(10, 13), 51200);
    fill_flat(wedge_corner(0, 100), wedge_corner(1, 100), wedge_corner(2, 100), 20);
    EXPECT_EQ(pixel(10, 13), 10);
}

TEST_F(TriangleFillers, DepthBeyondTheRangeKeepsItsLowSixteenBits) {
    fill_zcolour(wedge_corner(0, 300), wedge_corner(1, 300), wedge_corner(2, 300));
    EXPECT_EQ(pixel(10, 13), 300 - 256);
    EXPECT_EQ(depth(10, 13), 300 * 256 - 65536);
}

TEST_F(TriangleFillers, ConstantDepthColourIsItsIntegerPartAndDepthItsEightBitFraction) {
    fill_zcolour({20, 10, 100.5F}, {8, 30.25F, 100.5F}, {50, 38, 100.5F});
    int covered = 0;
    for (std::size_t i = 0; i < frame_pixels(); ++i) {
        if (zbuf[i] != 0) {
            ++covered;
            ASSERT_EQ(chunkybuf1[i], 100);
            ASSERT_EQ(zbuf[i], 25728);
        } else {
            ASSERT_EQ(chunkybuf1[i], 0);
        }
    }
    // The triangle's area is 471.75 pixels. Each of its 28 spans differs by less than a pixel from its true
    // length.
    EXPECT_NEAR(covered, 471.75, 28.0);
}

TEST_F(TriangleFillers, FlatColourIsTruncatedToItsLowEightBits) {
    const std::array<std::pair<float, int>, 7> cases{{{25.99F, 25},
                                                      {255.0F, 255},
                                                      {255.9F, 255},
                                                      {300.0F, 44},
                                                      {-1.5F, 255},
                                                      {std::numeric_limits<float>::quiet_NaN(), 0},
                                                      {std::numeric_limits<float>::infinity(), 255}}};
    for (const auto &[colour, byte] : cases) {
        blank_frame();
        chunkybuf1[pixel_index(10, 13)] = 77;
        fill_flat(wedge_corner(0, 100), wedge_corner(1, 100), wedge_corner(2, 100), colour);
        EXPECT_EQ(pixel(10, 13), byte) << colour;
    }
}

TEST_F(TriangleFillers, SpansAreClippedAtTheFramesSidesAndKeepTheirValues) {
    // From x = -6 to well beyond a frame 20 wide, with the value 50 + x.
    set_frame(20, 48);
    fill_zcolour({-6, 10, 44}, {26, 10, 76}, {-6, 42, 44});
    for (int x = 0; x < 20; ++x) {
        EXPECT_EQ(pixel(x, 11), 51 + x) << x;
        EXPECT_EQ(pixel(x, 12), 51 + x) << x;
    }
    EXPECT_EQ(lit_columns(30), columns(0, 5));
    EXPECT_EQ(lit_columns(36), std::vector<int>{});
}

TEST_F(TriangleFillers, TriangleBesideTheFrameDrawsNothing) {
    fill_flat({-40, 10, 100}, {-2, 20, 100}, {-30, 30, 100}, 200);
    fill_flat({64, 10, 100}, {90, 20, 100}, {70, 30, 100}, 200);
    EXPECT_TRUE(lit_rows().empty());
}

namespace {

/// The index of the texel that a face with these constant map coordinates shows.
int texel_shown(float column, float row) {
    int index = 0;
    for (const int shift : {8, 0}) {
        for (int i = 0; i < envmap_bytes; ++i) {
            envmap[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(i >> shift);
        }
        blank_frame();
        TriangleParams block = triangle(wedge_corner(0, 100), wedge_corner(1, 100), wedge_corner(2, 100));
        for (std::size_t slot = 12; slot < 18; slot += 2) {
            block[slot] = column;
            block[slot + 1] = row;
        }
        fill_tri_mapped(&block);
        index = index * 256 + pixel(10, 13);
    }
    return index;
}

} // namespace

TEST_F(TriangleFillers, MapCoordinatesCountFromTheMapsCentre) {
    EXPECT_EQ(texel_shown(0, 0), 128 * 256 + 128);
    EXPECT_EQ(texel_shown(-128, -128), 0);
    EXPECT_EQ(texel_shown(127, 127), 65535);
    EXPECT_EQ(texel_shown(10, -20), 108 * 256 + 138);
}

TEST_F(TriangleFillers, MapCoordinatesAreRoundedDown) {
    EXPECT_EQ(texel_shown(5.75F, 2.75F), (128 + 2) * 256 + 128 + 5);
    EXPECT_EQ(texel_shown(-1.5F, -0.25F), (128 - 1) * 256 + 128 - 2);
}

TEST_F(TriangleFillers, TexelsBeyondTheMapWrapAround) {
    // A column beyond the right side lands in the next row; a row beyond the last lands in the first ones.
    EXPECT_EQ(texel_shown(130, 0), 129 * 256 + 2);
    EXPECT_EQ(texel_shown(0, 130), 2 * 256 + 128);
    EXPECT_EQ(texel_shown(-130, -128), 65536 - 2);
    EXPECT_EQ(texel_shown(0, -129), 255 * 256 + 128);
    EXPECT_EQ(texel_shown(0, 256 * 3 + 1), 129 * 256 + 128);
}
