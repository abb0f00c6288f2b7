// SPDX-License-Identifier: MIT
// The order of a folder's objects, and the walk around it.
#include "platform/sdl/object_folder.h"

#include "support/temporary_files.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace {

using host::is_before;

TEST(NaturalOrder, ComparesNumbersByTheirValues) {
    EXPECT_TRUE(is_before("knot2.lwo", "knot10.lwo"));
    EXPECT_FALSE(is_before("knot10.lwo", "knot2.lwo"));
    EXPECT_TRUE(is_before("a1b20", "a1b100"));
    EXPECT_TRUE(is_before("9", "18446744073709551617"));
    EXPECT_TRUE(is_before("18446744073709551616", "18446744073709551617"));
}

TEST(NaturalOrder, TakesCapitalsForSmallLetters) {
    EXPECT_TRUE(is_before("Apple", "banana"));
    EXPECT_TRUE(is_before("apple", "Banana"));
}

TEST(NaturalOrder, IsStrictForNamesThatDifferInZerosOrCaseAlone) {
    const std::vector<std::string> alike{"Knot007", "Knot07", "Knot7", "knot007", "knot07", "knot7"};
    for (const std::string &name : alike) {
        EXPECT_FALSE(is_before(name, name));
        for (const std::string &other : alike) {
            EXPECT_TRUE(name == other || is_before(name, other) != is_before(other, name)) << name << other;
        }
    }
}

TEST(NaturalOrder, PutsABeginningBeforeTheWhole) {
    EXPECT_TRUE(is_before("", "a"));
    EXPECT_TRUE(is_before("knot", "knot2"));
    EXPECT_TRUE(is_before("knot.lwo", "knot2.lwo"));
}

class ObjectFolder : public testing::Test {
protected:
    void add(const std::string &name) const { files.write(name, std::string("FORM\0\0\0\4LWOB", 12)); }

    /// The name of the neighbour, empty if there is none.
    std::string neighbour(const std::string &name, int step) const {
        return std::filesystem::path(host::neighbour_of(files.path(name), step)).filename().string();
    }

    TemporaryFiles files;
};

TEST_F(ObjectFolder, IsWalkedAroundInBothDirections) {
    for (const char *name : {"knot10.lwo", "Knot2.LWO", "gem.lwob", "note.txt"}) {
        add(name);
    }
    EXPECT_EQ(neighbour("gem.lwob", 1), "Knot2.LWO");
    EXPECT_EQ(neighbour("Knot2.LWO", 1), "knot10.lwo");
    EXPECT_EQ(neighbour("knot10.lwo", 1), "gem.lwob");
    EXPECT_EQ(neighbour("gem.lwob", -1), "knot10.lwo");
    EXPECT_EQ(neighbour("knot10.lwo", -1), "Knot2.LWO");
}

TEST_F(ObjectFolder, LeavesOutWhatIsNoObject) {
    add("a.lwo");
    files.write("b.lwo", "no object");
    files.write("c.lwo", "FORM");
    std::filesystem::create_directory(files.path("d.lwo"));
    ASSERT_EQ(mkfifo(files.path("e.lwo").c_str(), 0600), 0);
    files.write("f.lwo", std::string("FORM\0\0\0\4LWO2", 12));
    EXPECT_EQ(neighbour("a.lwo", 1), "");
    EXPECT_EQ(neighbour("a.lwo", -1), "");
    add("g.lwo");
    EXPECT_EQ(neighbour("a.lwo", 1), "g.lwo");
    EXPECT_EQ(neighbour("a.lwo", -1), "g.lwo");
}

TEST_F(ObjectFolder, IsWalkedFromAFileThatIsNotListed) {
    add("a.lwo");
    add("c.lwo");
    add("b");
    EXPECT_EQ(neighbour("b", 1), "c.lwo");
    EXPECT_EQ(neighbour("b", -1), "a.lwo");
    EXPECT_EQ(neighbour("gone.lwo", 1), "a.lwo");
}

TEST_F(ObjectFolder, ThatCannotBeReadHasNoObjects) {
    EXPECT_EQ(host::neighbour_of(files.path("missing/a.lwo"), 1), "");
    EXPECT_EQ(host::neighbour_of("", 1), "");
}

} // namespace
