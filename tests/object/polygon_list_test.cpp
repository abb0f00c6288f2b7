// SPDX-License-Identifier: MIT
// Tests of the walk over the polygon list.
#include "object/polygon_list.h"

#include "support/model_builder.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Visited {
    std::size_t vertices;
    std::vector<std::uint16_t> words;
    bool has_valid_indices;

    bool operator==(const Visited &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Visited &visited) {
    out << visited.vertices << " {";
    for (const std::uint16_t word : visited.words) {
        out << ' ' << word;
    }
    return out << (visited.has_valid_indices ? " } usable" : " } unusable");
}

/// Sets the polygon list; three points by default.
std::vector<Visited> walk(const std::vector<std::uint16_t> &words, std::size_t points = 3) {
    reset_program_state();
    set_model(std::vector<Vec3>(points), words);
    std::vector<Visited> list;
    for_each_polygon([&list](const Polygon &polygon) {
        list.push_back(
            {polygon.vertices, {polygon.indices.begin(), polygon.indices.end()}, polygon.has_valid_indices});
    });
    return list;
}

using Walk = std::vector<Visited>;

class PolygonList : public testing::Test {
protected:
    void TearDown() override { reset_program_state(); }
};

} // namespace

TEST_F(PolygonList, EmptyListHasNoPolygons) {
    EXPECT_EQ(walk({}), Walk{});
}

TEST_F(PolygonList, GivesThePointsOfEachPolygonInListOrder) {
    const std::vector<std::uint16_t> words{3, 0, 1, 2, 7, 4, 2, 1, 0, 1, 9};
    EXPECT_EQ(walk(words), (Walk{{3, {0, 1, 2}, true}, {4, {2, 1, 0, 1}, true}}));
}

TEST_F(PolygonList, LastPolygonNeedsNoSurfaceWord) {
    EXPECT_EQ(walk({3, 0, 1, 2}), (Walk{{3, {0, 1, 2}, true}}));
}

TEST_F(PolygonList, EndsAtAPolygonThatTheListCutsShort) {
    EXPECT_EQ(walk({3, 0, 1, 2, 0, 3, 0, 1}), (Walk{{3, {0, 1, 2}, true}}));
    EXPECT_EQ(walk({5, 0, 1, 2, 0}), Walk{});
    EXPECT_EQ(walk({65535, 0, 1, 2, 0}), Walk{});
}

TEST_F(PolygonList, PolygonWithAnInvalidIndexIsUnusableAndTheWalkContinues) {
    const std::vector<std::uint16_t> words{3, 0, 1, 3, 0, 3, 0, 1, 2, 0};
    EXPECT_EQ(walk(words), (Walk{{3, {0, 1, 3}, false}, {3, {0, 1, 2}, true}}));
}

TEST_F(PolygonList, OneBadIndexAfterTheFirstThreeMakesAPolygonUnusable) {
    EXPECT_EQ(walk({4, 0, 1, 2, 65535, 0}), (Walk{{4, {0, 1, 2, 65535}, false}}));
}

TEST_F(PolygonList, SurfaceWordIsNotAPoint) {
    EXPECT_EQ(walk({3, 0, 1, 2, 500}), (Walk{{3, {0, 1, 2}, true}}));
}

TEST_F(PolygonList, LineUsesItsSurfaceWordAsThirdPoint) {
    const std::vector<std::uint16_t> words{2, 0, 1, 2, 3, 2, 1, 0, 0};
    EXPECT_EQ(walk(words), (Walk{{2, {0, 1, 2}, true}, {3, {2, 1, 0}, true}}));
    EXPECT_EQ(walk({2, 0, 1, 500}), (Walk{{2, {0, 1, 500}, false}}));
}

TEST_F(PolygonList, SinglePointReachesIntoTheNextPolygon) {
    const std::vector<std::uint16_t> words{1, 0, 1, 2, 1, 0, 2};
    EXPECT_EQ(walk(words), (Walk{{1, {0, 1, 2}, true}, {2, {1, 0, 2}, true}}));
}

TEST_F(PolygonList, PolygonWithoutPointsHasTwoWords) {
    const std::vector<std::uint16_t> words{0, 1, 3, 0, 1, 2, 0};
    EXPECT_EQ(walk(words, 4), (Walk{{0, {1, 3, 0}, true}, {3, {0, 1, 2}, true}}));
}

TEST_F(PolygonList, EndsAtAPolygonOfFewPointsWithoutThreeWordsAfterIt) {
    EXPECT_EQ(walk({2, 0, 1}), Walk{});
    EXPECT_EQ(walk({0, 0, 1}), Walk{});
    EXPECT_EQ(walk({0}), Walk{});
}

TEST_F(PolygonList, IgnoresAnOddLastByte) {
    set_model(std::vector<Vec3>(3), {3, 0, 1, 2});
    polygon_chunk_bytes = 2 * 3 + 1;
    int polygons = 0;
    for_each_polygon([&polygons](const Polygon &) { ++polygons; });
    EXPECT_EQ(polygons, 0) << "the fourth word has only one of its bytes";

    polygon_chunk_bytes = 2 * 4 + 1;
    for_each_polygon([&polygons](const Polygon &) { ++polygons; });
    EXPECT_EQ(polygons, 1);
}

TEST_F(PolygonList, VisitsTheFirstPolygonOfUnreadZerosAndCountsTheOthers) {
    std::vector<std::uint16_t> words{3, 0, 1, 2, 1};
    constexpr std::size_t unread = 1000;
    words.resize(words.size() + unread);
    set_model(std::vector<Vec3>(3), words);
    unread_polygon_words = unread;
    int visited = 0;
    const std::int32_t counted = for_each_polygon([&visited](const Polygon &) { ++visited; });
    EXPECT_EQ(visited, 2);
    // Without `unread_polygon_words` the walk visits all of them: 499 of two words, and one that is cut
    // short.
    EXPECT_EQ(visited + counted, 1 + 499);
    unread_polygon_words = 0;
    visited = 0;
    EXPECT_EQ(for_each_polygon([&visited](const Polygon &) { ++visited; }), 0);
    EXPECT_EQ(visited, 1 + 499);
}

TEST_F(PolygonList, TrailingPartialPointDoesNotCount) {
    set_model(std::vector<Vec3>(4), {3, 0, 1, 3, 0});
    point_chunk_bytes = 3 * 12 + 11;
    bool usable = true;
    for_each_polygon([&usable](const Polygon &polygon) { usable = polygon.has_valid_indices; });
    EXPECT_FALSE(usable);
}
