// SPDX-License-Identifier: MIT
// Tests that a chunk that claims more than the file has is drawn as if the file continued with zeros.
#include "display/frame_buffers.h"
#include "display/presentation.h"
#include "object/lwo_reader.h"
#include "object/model.h"
#include "pipeline/preparation.h"
#include "pipeline/render_frame.h"
#include "raster/texture_map.h"
#include "support/model_builder.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <tuple>
#include <vector>

namespace {

constexpr int width = 61;
constexpr int height = 47;

/// The results of drawing a frame.
struct Drawn {
    std::vector<std::uint8_t> pixels;
    std::vector<std::uint16_t> depths;
    std::int32_t faces;
    std::int32_t triangles;

    bool operator==(const Drawn &) const = default;
};

/// Settings under which a model is drawn.
struct Look {
    std::int32_t flip;
    std::int32_t doubleside;
    std::int32_t dot_lum;
};

/// A chunk that claims `claimed` bytes: cut after `data`, or filled up with zeros if `is_whole`.
std::string claiming(const std::string &identifier, std::uint32_t claimed, std::string data, bool is_whole) {
    if (is_whole) {
        data.resize(claimed, '\0');
    }
    return ::claiming(identifier, claimed, data);
}

void load(const std::string &object) {
    reset_program_state();
    std::FILE *file = std::tmpfile();
    std::fwrite(object.data(), 1, object.size(), file);
    std::rewind(file);
    read_object(file);
    set_frame(width, height);
    for (std::size_t i = 0; i < envmap_bytes; ++i) {
        envmap[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
    }
    prepare_object();
}

/// Draws all modes in all clear styles, one after another, on a spinning object.
std::vector<Drawn> draw_all(const std::string &object, const Look &look) {
    load(object);
    viewer.flip = look.flip;
    viewer.doubleside = look.doubleside;
    viewer.dot_lum = look.dot_lum;
    viewer.dot_lum_in_blur = look.dot_lum / 3;
    viewer.dots = 1;
    std::vector<Drawn> frames;
    for (viewer.clear_style = 0; viewer.clear_style < 4; ++viewer.clear_style) {
        for (viewer.obj_style = 1; viewer.obj_style < 7; ++viewer.obj_style) {
            // The dots overlay resets the counters, so they are read before it is drawn. In mode 6 they are
            // 0.
            viewer.dots = 0;
            render_frame();
            const std::int32_t faces = faces_seen;
            const std::int32_t triangles = triangles_drawn;
            viewer.dots = 1;
            render_frame();
            frames.push_back({{chunkybuf1.get(), chunkybuf1.get() + frame_pixels()},
                              {zbuf.get(), zbuf.get() + frame_pixels()},
                              faces,
                              triangles});
            swap_frame_buffers();
            viewer.spin_angle += 17.0;
        }
    }
    return frames;
}

constexpr Look looks[] = {{0, 0, 25600}, {1, 0, 200}, {0, 1, -70000}, {1, 1, 131072}, {0, 1, -300000}};

/// Runs of other tests begin with this process's state, so it is reset at the end.
class UnreadChunks : public testing::Test {
protected:
    void TearDown() override { reset_program_state(); }
};

void expect_equal(const std::string &cut, const std::string &whole) {
    for (const Look &look : looks) {
        const std::vector<Drawn> drawn = draw_all(cut, look);
        const std::int32_t processed = points_to_process();
        const std::int32_t unread = unread_polygon_words;
        const std::vector<Drawn> expected = draw_all(whole, look);
        EXPECT_TRUE(drawn == expected)
            << "flip " << look.flip << ", doubleside " << look.doubleside << ", dots " << look.dot_lum;
        // Otherwise both files would have been processed in the same way.
        EXPECT_TRUE(processed < points_to_process() || unread > 0);
        EXPECT_EQ(unread_points, 0);
        EXPECT_EQ(unread_polygon_words, 0);
    }
}

const std::vector<Vec3> points_there{
    {-1.0F, -1.0F, 0.0F}, {1.0F, -1.0F, 0.5F}, {1.0F, 1.0F, 0.2F}, {-1.0F, 1.5F, -0.5F}, {0.3F, -0.4F, 1.5F}};

/// The claimed points, the bytes of the points that the file has, and the polygon list.
using PointCase = std::tuple<std::uint32_t, std::size_t, std::vector<std::uint16_t>>;
class UnreadPoints : public UnreadChunks, public testing::WithParamInterface<PointCase> {};

TEST_P(UnreadPoints, AreDrawnLikeZeros) {
    const auto &[points, bytes, words] = GetParam();
    const std::string polygons = chunk("POLS", word_data(words));
    const auto object = [&, &there = bytes, &claimed = points](bool is_whole) {
        return form("LWOB", polygons + claiming("PNTS", claimed * 12,
                                                point_data(points_there).substr(0, there), is_whole));
    };
    expect_equal(object(false), object(true));
}

const std::vector<std::uint16_t> two_triangles{3, 0, 1, 2, 1, 3, 0, 2, 3, 1};

INSTANTIATE_TEST_SUITE_P(Claims, UnreadPoints,
                         testing::Values(PointCase{6, 48, two_triangles}, PointCase{300, 48, two_triangles},
                                         PointCase{300, 47, two_triangles}, PointCase{300, 37, two_triangles},
                                         PointCase{300, 0, two_triangles}, PointCase{300, 59, two_triangles},
                                         PointCase{300, 60, two_triangles},
                                         PointCase{900, 48, {3, 0, 1, 2, 1, 3, 0, 250, 3, 1}},
                                         PointCase{950, 48, {4, 0, 1, 899, 3, 1, 3, 7, 3, 3, 1}},
                                         PointCase{5000, 48, two_triangles}));

TEST_F(UnreadChunks, OfUnusedPointsAreDrawnLikeZeros) {
    const auto object = [](bool is_whole) {
        return form("LWOB", chunk("POLS", "x") + claiming("PNTS", 300 * 12, "", is_whole));
    };
    expect_equal(object(false), object(true));
}

/// The claimed bytes of the polygon list, and its words.
using WordCase = std::tuple<std::uint32_t, std::vector<std::uint16_t>, std::size_t>;
class UnreadPolygons : public UnreadChunks, public testing::WithParamInterface<WordCase> {};

TEST_P(UnreadPolygons, AreDrawnLikeZeros) {
    const auto &[claimed, words, bytes] = GetParam();
    const std::string points = chunk("PNTS", point_data(points_there));
    const auto object = [&, &size = claimed, &list = words, &there = bytes](bool is_whole) {
        return form("LWOB", points + claiming("POLS", size, word_data(list).substr(0, there), is_whole));
    };
    expect_equal(object(false), object(true));
}

INSTANTIATE_TEST_SUITE_P(Claims, UnreadPolygons,
                         testing::Values(WordCase{22, two_triangles, 20}, WordCase{24, two_triangles, 20},
                                         WordCase{26, two_triangles, 20}, WordCase{27, two_triangles, 20},
                                         WordCase{28, two_triangles, 20}, WordCase{30, two_triangles, 20},
                                         WordCase{400, two_triangles, 20}, WordCase{401, two_triangles, 20},
                                         WordCase{400, two_triangles, 19}, WordCase{400, two_triangles, 13},
                                         WordCase{400, two_triangles, 0},
                                         WordCase{4000, {3, 0, 1, 2, 1, 900}, 11},
                                         WordCase{4000, {3, 0, 1, 2, 1, 900, 0, 1, 2}, 18},
                                         WordCase{4001, {3, 0, 1, 2, 1, 9, 0, 1, 2}, 18},
                                         WordCase{60000, two_triangles, 20}));

} // namespace
