// SPDX-License-Identifier: MIT
// Tests that the built viewer has the version tag that the system's version command looks for.
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

TEST(VersionTag, IsInTheViewersExecutable) {
    std::ifstream file(std::string(ZELVO_BIN_FOLDER) + "/zelvo", std::ios::binary);
    ASSERT_TRUE(file);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::string tag("$VER: Zelvo 0.67 OS4 (23-Feb-2005)", sizeof "$VER: Zelvo 0.67 OS4 (23-Feb-2005)");
    EXPECT_NE(bytes.find(tag), std::string::npos);
}
