// SPDX-License-Identifier: MIT
// Tests of the reports about values that no screen can have.
#include "platform/shared/refused_screen.h"

#include "support/temporary_files.h"

#include <cstdio>
#include <gtest/gtest.h>

namespace {

class RefusedScreen : public testing::Test {
protected:
    const TemporaryFiles files;
    const std::string path =
        files.write("Zelvo.vars", "gammas: 1 1 1\nwidth of it: 5\nModeID: 7\nwidth: 16385\nheight: -3\n"
                                  "depth: 99999999999\nwidth: 20000\nheight:\n12\n");
};

/// What a function prints on standard error.
template <typename Call>
std::string errors_of(Call call) {
    testing::internal::CaptureStderr();
    call();
    return testing::internal::GetCapturedStderr();
}

} // namespace

TEST_F(RefusedScreen, FindsTheLineOfAValue) {
    EXPECT_EQ(host::line_of_value(path, "ModeID:", 7), 3);
    EXPECT_EQ(host::line_of_value(path, "width:", 16385), 4);
    EXPECT_EQ(host::line_of_value(path, "height:", -3), 5);
    EXPECT_EQ(host::line_of_value(path, "width:", 20000), 7);
    EXPECT_EQ(host::line_of_value(path, "gammas:", 1), 1);
}

TEST_F(RefusedScreen, FindsAnOverlongNumberByTheValueThatIsLoaded) {
    int loaded = 0;
    ASSERT_EQ(std::sscanf("99999999999", "%d", &loaded), 1);
    EXPECT_EQ(host::line_of_value(path, "depth:", loaded), 6);
}

TEST_F(RefusedScreen, FindsNoLineForAnotherValueOrWithoutAFile) {
    EXPECT_EQ(host::line_of_value(path, "width:", 5), std::nullopt);
    EXPECT_EQ(host::line_of_value(path, "ModeID:", 8), std::nullopt);
    EXPECT_EQ(host::line_of_value(path, "odeID:", 7), std::nullopt);
    EXPECT_EQ(host::line_of_value(files.path("missing"), "ModeID:", 7), std::nullopt);
    EXPECT_EQ(host::line_of_value("", "ModeID:", 7), std::nullopt);
    EXPECT_EQ(host::line_of_value(files.folder(), "ModeID:", 7), std::nullopt);
}

TEST_F(RefusedScreen, AnUnknownModeIsNamedWithItsPlace) {
    EXPECT_EQ(errors_of([&] { host::report_unknown_mode(path, 7); }),
              "zelvo: " + path + ":3: no display mode 7\n");
    EXPECT_EQ(errors_of([&] { host::report_unknown_mode(path, -1); }), "zelvo: no display mode -1\n");
}

TEST_F(RefusedScreen, EachImpossibleSideIsNamedWithItsPlace) {
    EXPECT_EQ(errors_of([&] { EXPECT_TRUE(host::report_impossible_sides(path, 16385, -3)); }),
              "zelvo: " + path + ":4: no screen has a width of 16385, only of 1 to 16384\n" +
                  "zelvo: " + path + ":5: no screen has a height of -3, only of 1 to 16384\n");
    EXPECT_EQ(errors_of([&] { EXPECT_TRUE(host::report_impossible_sides(path, 0, 1)); }),
              "zelvo: no screen has a width of 0, only of 1 to 16384\n");
    EXPECT_EQ(errors_of([&] { EXPECT_TRUE(host::report_impossible_sides("", 1, 16385)); }),
              "zelvo: no screen has a height of 16385, only of 1 to 16384\n");
}

TEST_F(RefusedScreen, PossibleSidesAreNotReported) {
    EXPECT_EQ(errors_of([&] { EXPECT_FALSE(host::report_impossible_sides(path, 1, 16384)); }), "");
    EXPECT_EQ(errors_of([&] { EXPECT_FALSE(host::report_impossible_sides(path, 16384, 1)); }), "");
}
