// SPDX-License-Identifier: MIT
// Tests of an object that arrives through a pipe, where no chunk can be skipped.
#include "object/lwo_reader.h"
#include "object/model.h"
#include "support/model_builder.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

/// Reads an object from a pipe.
void read_from_pipe(const std::string &object) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], object.data(), object.size()), static_cast<ssize_t>(object.size()));
    close(ends[1]);
    read_object(fdopen(ends[0], "rb"));
}

class UnseekableObject : public testing::Test {
protected:
    void SetUp() override { reset_program_state(); }
    void TearDown() override { reset_program_state(); }

    const std::string points = chunk("PNTS", std::string(36, '\0'));
    const std::string polygons = chunk("POLS", std::string(10, '\0'));
    const std::string other = chunk("SRFS", "abcd");
};

TEST_F(UnseekableObject, EndsAtTheFirstChunkThatWouldBeSkipped) {
    read_from_pipe(form("LWOB", points + polygons + other + chunk("PNTS", std::string(12, '\0'))));
    EXPECT_EQ(point_count(), 3);
    EXPECT_EQ(polygon_word_count(), 5);
}

TEST_F(UnseekableObject, IsRefusedIfItEndsBeforeItsPolygons) {
    EXPECT_EXIT(
        {
            read_from_pipe(form("LWOB", points + other + polygons));
            std::exit(0);
        },
        testing::ExitedWithCode(20), "");
}

} // namespace
