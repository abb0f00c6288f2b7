// SPDX-License-Identifier: MIT
// Tests of names whose white space is replaced.
#include "platform/shared/blank_free_names.h"

#include <cctype>
#include <gtest/gtest.h>
#include <string>

using host::with_blanks;
using host::without_blanks;

TEST(BlankFreeNames, StayReadable) {
    EXPECT_EQ(without_blanks("My textures/soft waves.chunky"), "My%20textures/soft%20waves.chunky");
    EXPECT_EQ(with_blanks("My%20textures/soft%20waves.chunky"), "My textures/soft waves.chunky");
}

TEST(BlankFreeNames, HaveNoWhiteSpace) {
    EXPECT_EQ(without_blanks("a b\tc\nd\ve\ff\rg"), "a%20b%09c%0Ad%0Be%0Cf%0Dg");
    for (int code = 1; code < 256; ++code) {
        const std::string name{'x', static_cast<char>(code), 'y'};
        const std::string written = without_blanks(name);
        EXPECT_EQ(written == name, std::isspace(code) == 0) << code;
        EXPECT_EQ(with_blanks(written), name) << code;
    }
}

TEST(BlankFreeNames, LeaveOrdinaryNamesAlone) {
    for (const char *name :
         {"", "Zelvo_envmap.chunky", "/a/b:c/d.lwo", "100%", "50%/x", "%41%2f%0a%0%", "caf\xC3\xA9"}) {
        EXPECT_EQ(without_blanks(name), name);
        EXPECT_EQ(with_blanks(name), name);
    }
}

TEST(BlankFreeNames, KeepSimilarNamesDistinct) {
    EXPECT_EQ(without_blanks("a%20b"), "a%2520b");
    EXPECT_EQ(without_blanks("a%25b"), "a%2525b");
    EXPECT_EQ(with_blanks("a%2520b"), "a%20b");
}

TEST(BlankFreeNames, AreConvertedBackExactly) {
    // All names of six of these characters: long enough for two forms in a row.
    const std::string characters = "% 205A\n";
    std::size_t count = 1;
    for (int i = 0; i < 6; ++i) {
        count *= characters.size();
    }
    for (std::size_t number = 0; number < count; ++number) {
        std::string name;
        for (std::size_t rest = number, i = 0; i < 6; ++i, rest /= characters.size()) {
            name += characters[rest % characters.size()];
        }
        ASSERT_EQ(with_blanks(without_blanks(name)), name);
    }
}
