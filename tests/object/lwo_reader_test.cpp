// SPDX-License-Identifier: MIT
// Tests of what the object reader accepts. The tests of refused objects run the whole program.
#include "object/lwo_reader.h"

#include "object/model.h"
#include "support/model_builder.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

class LwoReader : public testing::Test {
protected:
    void SetUp() override { reset_program_state(); }

    /// Later tests fork this process to run the program, which begins with this state.
    void TearDown() override { reset_program_state(); }

    void read(const std::string &bytes) {
        read_object(std::fopen(files.write("object.lwo", bytes).c_str(), "rb"));
    }

    static std::vector<std::uint16_t> polygon_words() {
        return {polygon_chunk.get(), polygon_chunk.get() + polygon_word_count()};
    }

    TemporaryFiles files;
};

void expect_point(std::size_t index, float x, float y, float z) {
    EXPECT_EQ(point_chunk[index].x, x) << index;
    EXPECT_EQ(point_chunk[index].y, y) << index;
    EXPECT_EQ(point_chunk[index].z, z) << index;
}

/// Chunks for forms that a test assembles itself.
std::string points(const std::vector<float> &coordinates) {
    std::string data;
    for (const float coordinate : coordinates) {
        data += big_endian_float(coordinate);
    }
    return chunk("PNTS", data);
}
std::string polygons(const std::vector<std::uint16_t> &words) {
    std::string data;
    for (const std::uint16_t word : words) {
        data += big_endian_16(word);
    }
    return chunk("POLS", data);
}

const std::string one_point = points({1, 2, 3});
const std::string one_polygon = polygons({3, 0, 0, 0, 1});

} // namespace

TEST_F(LwoReader, ReadsBigEndianPointsAndPolygons) {
    read(object_file({{1.5F, -2.25F, 1e20F}, {0, -0.0F, 3}}, {3, 0, 1, 258, 0xFFFE}));
    EXPECT_EQ(point_chunk_bytes, 24);
    EXPECT_EQ(point_count(), 2);
    expect_point(0, 1.5F, -2.25F, 1e20F);
    expect_point(1, 0, -0.0F, 3);
    EXPECT_EQ(polygon_chunk_bytes, 10);
    EXPECT_EQ(polygon_words(), (std::vector<std::uint16_t>{3, 0, 1, 258, 0xFFFE}));
}

TEST_F(LwoReader, BytesAreReadInTheFilesOrder) {
    read(form("LWOB", chunk("PNTS", {"\x3F\x80\x00\x00\xC0\x00\x00\x00\x41\x20\x00\x00", 12}) +
                          chunk("POLS", {"\x01\x02\x80\x04", 4})));
    expect_point(0, 1.0F, -2.0F, 10.0F);
    EXPECT_EQ(polygon_words(), (std::vector<std::uint16_t>{0x0102, 0x8004}));
}

TEST_F(LwoReader, StopsAtAChunkOfNegativeSizeBeforeTheEndOfTheFile) {
    if constexpr (sizeof(long) == 4) {
        GTEST_SKIP() << "no file is that large here";
    }
    const std::string start =
        form("LWOB", one_point + one_polygon) + "SRFS" + std::string("\x80\x00\x00\x00", 4);
    const std::string path = files.write("object.lwo", start);
    // The 2 GB in between are a hole and need no room on the disk.
    std::FILE *file = std::fopen(path.c_str(), "r+b");
    ASSERT_NE(file, nullptr);
    ASSERT_EQ(std::fseek(file, static_cast<long>(start.size() + 0x80000000), SEEK_SET), 0);
    const std::string other_point = points({9, 9, 9});
    ASSERT_EQ(std::fwrite(other_point.data(), 1, other_point.size(), file), other_point.size());
    ASSERT_EQ(std::fclose(file), 0);
    read_object(std::fopen(path.c_str(), "rb"));
    expect_point(0, 1, 2, 3);
}

TEST_F(LwoReader, ThreePointsGiveArraysOfThreeZeroedRecords) {
    read(object_file({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}, {3, 0, 1, 2, 1}));
    EXPECT_EQ(point_chunk_bytes, 36);
    for (const auto *array : {&lwopoints2, &lwopoints3, &lwonormals2, &lwonormals3}) {
        ASSERT_NE(*array, nullptr);
        for (std::size_t i = 0; i < 3; ++i) {
            Vec3 &record = (*array)[i];
            EXPECT_TRUE(record.x == 0 && record.y == 0 && record.z == 0);
            record = {1, 1, static_cast<float>(i)};
        }
        EXPECT_EQ((*array)[2].z, 2.0F);
    }
    ASSERT_NE(lwofis, nullptr);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(lwofis[i], 0.0F);
        lwofis[i] = 1.0F;
    }
}

TEST_F(LwoReader, ArraysHoldATrailingPartialRecord) {
    read(form("LWOB", chunk("PNTS", std::string(12 + 11, '\0')) + one_polygon));
    EXPECT_EQ(point_chunk_bytes, 23);
    EXPECT_EQ(point_count(), 1);
    lwopoints3[1] = {1, 2, 3};
    lwofis[1] = 4;
    EXPECT_EQ(lwopoints3[1].z, 3.0F);
}

TEST_F(LwoReader, FormSizeIsIgnored) {
    std::string bytes = object_file({{1, 2, 3}}, {3, 0, 0, 0, 1});
    bytes.replace(4, 4, "\xFF\xFF\xFF\xFF");
    read(bytes);
    expect_point(0, 1, 2, 3);
}

TEST_F(LwoReader, OtherChunksAreSkippedUnread) {
    read(form("LWOB", chunk("SRFS", "PNTS....") + one_point + chunk("CRVS", "") + one_polygon +
                          chunk("SURF", std::string(1000, 'P'))));
    expect_point(0, 1, 2, 3);
    EXPECT_EQ(polygon_words().size(), 5U);
}

TEST_F(LwoReader, PolygonsMayComeBeforeThePoints) {
    read(form("LWOB", one_polygon + one_point));
    expect_point(0, 1, 2, 3);
    EXPECT_EQ(polygon_words().size(), 5U);
}

TEST_F(LwoReader, NoPadByteFollowsAChunkOfOddSize) {
    read(form("LWOB", chunk("SRFS", "odd") + one_point + chunk("SURF", "x") + one_polygon));
    expect_point(0, 1, 2, 3);
    EXPECT_EQ(polygon_words().size(), 5U);
}

TEST_F(LwoReader, OddLastByteOfThePolygonListIsIgnored) {
    std::string data;
    for (const std::uint16_t word : {3, 0, 0, 0, 1}) {
        data += big_endian_16(word);
    }
    read(form("LWOB", chunk("POLS", data + "\x7F") + one_point));
    EXPECT_EQ(polygon_chunk_bytes, 11);
    EXPECT_EQ(polygon_words(), (std::vector<std::uint16_t>{3, 0, 0, 0, 1}));
    expect_point(0, 1, 2, 3);
}

TEST_F(LwoReader, SecondChunkReplacesTheFirst) {
    read(form("LWOB", one_point + one_polygon + points({9, 8, 7, 6, 5, 4}) + polygons({4, 0, 1, 0, 1, 2})));
    EXPECT_EQ(point_count(), 2);
    expect_point(1, 6, 5, 4);
    EXPECT_EQ(polygon_words(), (std::vector<std::uint16_t>{4, 0, 1, 0, 1, 2}));
}

TEST_F(LwoReader, ChunkNumber101IsStillRead) {
    read(form("LWOB", one_polygon + skipped_chunks(99) + one_point));
    expect_point(0, 1, 2, 3);
}

TEST_F(LwoReader, ChunkNumber102IsIgnored) {
    read(form("LWOB", one_polygon + one_point + skipped_chunks(99) + points({7, 7, 7})));
    expect_point(0, 1, 2, 3);
}

TEST_F(LwoReader, PointsCutShortAreFilledUpWithZerosAndKeepTheSizeOfTheirHeader) {
    // The header says 24 bytes; the file has 14.
    read(form("LWOB", one_polygon + "PNTS" + big_endian_32(24) + big_endian_float(1) + big_endian_float(2) +
                          big_endian_float(3) + big_endian_16(0x4080)));
    EXPECT_EQ(point_chunk_bytes, 24);
    EXPECT_EQ(point_count(), 2);
    expect_point(0, 1, 2, 3);
    expect_point(1, 4, 0, 0);
}

TEST_F(LwoReader, PolygonsCutShortAreFilledUpWithZerosAndKeepTheSizeOfTheirHeader) {
    read(form("LWOB", one_point + "POLS" + big_endian_32(10) + big_endian_16(3) + "\x01"));
    EXPECT_EQ(polygon_chunk_bytes, 10);
    EXPECT_EQ(polygon_words(), (std::vector<std::uint16_t>{3, 0x0100, 0, 0, 0}));
}

TEST_F(LwoReader, ChunkHeaderCutShortEndsTheFile) {
    read(form("LWOB", one_polygon + one_point + "PNTS\0\0"));
    expect_point(0, 1, 2, 3);
}

TEST_F(LwoReader, OtherChunkThatIsCutShortEndsTheFile) {
    read(form("LWOB", one_polygon + one_point + "SURF" + big_endian_32(0x7FFFFFFF) + "....."));
    expect_point(0, 1, 2, 3);
}

TEST_F(LwoReader, OtherChunkOfNegativeSizeEndsTheFile) {
    // If the size were used to seek backwards, the reader would find the last points again.
    read(form("LWOB", one_polygon + one_point + "SURF" + big_endian_32(0xFFFFFFF8) + points({9, 9, 9})));
    expect_point(0, 1, 2, 3);
}

TEST_F(LwoReader, ClosesTheFile) {
    const std::string path = files.write("object.lwo", object_file({{1, 2, 3}}, {3, 0, 0, 0, 1}));
    // More files than a process may have open.
    for (int i = 0; i < 5000; ++i) {
        std::FILE *file = std::fopen(path.c_str(), "rb");
        ASSERT_NE(file, nullptr) << "after " << i << " objects";
        read_object(file);
    }
}
