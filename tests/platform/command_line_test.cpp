// SPDX-License-Identifier: MIT
// Tests of the platform's rules for command lines and paths.
#include "platform/shared/command_line.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

using host::file_argument;
using host::join_path;
using host::join_path_in_place;

TEST(FileArgument, OneWordIsTheFile) {
    EXPECT_EQ(file_argument({"objects/cow.lwo"}), "objects/cow.lwo");
    EXPECT_EQ(file_argument({"with a blank"}), "with a blank");
    EXPECT_EQ(file_argument({"FILES"}), "FILES");
    EXPECT_EQ(file_argument({"NAME=cow.lwo"}), "NAME=cow.lwo");
}

TEST(FileArgument, KeywordMayComeBeforeTheFile) {
    EXPECT_EQ(file_argument({"FILE", "cow.lwo"}), "cow.lwo");
    EXPECT_EQ(file_argument({"FILE=cow.lwo"}), "cow.lwo");
    EXPECT_EQ(file_argument({"FILE=a=b"}), "a=b");
}

TEST(FileArgument, KeywordMayBeWrittenInAnyCase) {
    EXPECT_EQ(file_argument({"file", "cow.lwo"}), "cow.lwo");
    EXPECT_EQ(file_argument({"File=cow.lwo"}), "cow.lwo");
}

TEST(FileArgument, WordThatOnlyResemblesTheKeywordIsTheFile) {
    EXPECT_EQ(file_argument({"FIL=cow.lwo"}), "FIL=cow.lwo");
    EXPECT_EQ(file_argument({"FILES=cow.lwo"}), "FILES=cow.lwo");
    EXPECT_EQ(file_argument({"PILE=cow.lwo"}), "PILE=cow.lwo");
    EXPECT_EQ(file_argument({"FILE:cow.lwo"}), "FILE:cow.lwo");
    EXPECT_EQ(file_argument({"FIL"}), "FIL");
    EXPECT_EQ(file_argument({""}), "");
    EXPECT_EQ(file_argument({"FILES", "cow.lwo"}), std::nullopt);
}

TEST(FileArgument, TheKeywordsFileMayBeAnyWord) {
    EXPECT_EQ(file_argument({"FILE="}), "");
    EXPECT_EQ(file_argument({"FILE", "FILE"}), "FILE");
    EXPECT_EQ(file_argument({"FILE", "FILE=cow.lwo"}), "FILE=cow.lwo");
    EXPECT_EQ(file_argument({"FILE=FILE"}), "FILE");
}

TEST(FileArgument, NoWordDoesNotParse) {
    EXPECT_EQ(file_argument({}), std::nullopt);
}

TEST(FileArgument, KeywordAloneDoesNotParse) {
    EXPECT_EQ(file_argument({"FILE"}), std::nullopt);
    EXPECT_EQ(file_argument({"file"}), std::nullopt);
}

TEST(FileArgument, TooManyWordsDoNotParse) {
    EXPECT_EQ(file_argument({"one", "two"}), std::nullopt);
    EXPECT_EQ(file_argument({"FILE", "one", "two"}), std::nullopt);
    EXPECT_EQ(file_argument({"FILE=one", "two"}), std::nullopt);
    EXPECT_EQ(file_argument({"one", "FILE"}), std::nullopt);
}

TEST(JoinPath, PutsASlashBetweenDrawerAndFile) {
    EXPECT_EQ(join_path("Work:objects", "cow"), "Work:objects/cow");
    EXPECT_EQ(join_path("objects", "cow"), "objects/cow");
}

TEST(JoinPath, NeedsNoSlashAfterAVolumeOrASlash) {
    EXPECT_EQ(join_path("Work:", "cow"), "Work:cow");
    EXPECT_EQ(join_path("objects/", "cow"), "objects/cow");
}

TEST(JoinPath, EmptyDrawerGivesTheFileAlone) {
    EXPECT_EQ(join_path("", "cow"), "cow");
    EXPECT_EQ(join_path("", ""), "");
}

TEST(JoinPathInPlace, FillsTheBufferToItsLastByte) {
    std::array<char, 8> drawer{"abc"};
    drawer[7] = 'x';
    EXPECT_TRUE(join_path_in_place(drawer.data(), "def", drawer.size()));
    EXPECT_EQ(std::string(drawer.data(), drawer.size()), std::string("abc/def", 8));
}

TEST(JoinPathInPlace, LeavesTheDrawerAloneIfThePathDoesNotFit) {
    std::array<char, 8> drawer{"abc"};
    EXPECT_FALSE(join_path_in_place(drawer.data(), "defg", drawer.size()));
    EXPECT_STREQ(drawer.data(), "abc");
    EXPECT_FALSE(join_path_in_place(drawer.data(), "", 0));
}
