// SPDX-License-Identifier: MIT
// What zelvo-thumbnailer refuses: each time with one line on standard error, and without an output.
#include "robustness/measured_run.h"
#include "support/model_builder.h"
#include "support/tool_run.h"

#include <algorithm>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/time.h>

namespace {

constexpr int exit_misuse = 2;
constexpr int exit_no_picture = 20;

const std::vector<Vec3> four_points{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
const std::vector<std::uint16_t> triangle{3, 0, 2, 1, 1};

/// Processor time of all processes that have ended, in seconds.
double time_of_children() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

class ThumbnailerRefuses : public testing::Test {
protected:
    ToolRun run(const std::vector<std::string> &arguments) {
        return run_tool("zelvo-thumbnailer", arguments, {files.folder(), files.folder(), {}});
    }
    ToolRun run_on(const std::string &input) { return run({input, files.path("out.png"), "32"}); }

    /// Checks that the run said this in one line, and that there is no output, not even a part of one.
    void expect_refusal(const ToolRun &refused, int exit_code, const std::string &reason) {
        EXPECT_EQ(refused.exit_code, exit_code) << reason;
        EXPECT_EQ(refused.output, "") << reason;
        EXPECT_TRUE(refused.errors.starts_with("zelvo-thumbnailer: ")) << refused.errors;
        EXPECT_TRUE(refused.errors.ends_with(reason + "\n")) << refused.errors;
        EXPECT_EQ(std::count(refused.errors.begin(), refused.errors.end(), '\n'), 1) << refused.errors;
        for (const auto &entry : std::filesystem::directory_iterator(files.folder())) {
            EXPECT_FALSE(entry.path().filename().string().starts_with("out.png")) << entry.path();
        }
    }

    std::string good_object() { return files.write("good.lwo", object_file(four_points, triangle)); }

    TemporaryFiles files;
};

TEST_F(ThumbnailerRefuses, AWrongCommandLine) {
    const std::string help = "needs INPUT, OUTPUT and SIZE (see zelvo-thumbnailer --help)";
    expect_refusal(run({}), exit_misuse, help);
    expect_refusal(run({"a.lwo", "out.png"}), exit_misuse, help);
    expect_refusal(run({"a.lwo", "out.png", "128", "128"}), exit_misuse, help);
    expect_refusal(run({"--unknown"}), exit_misuse, help);
    for (const std::string size : {"0", "-1", "2049", "128x128", "", " 128", "99999999999", "large"}) {
        expect_refusal(run({good_object(), files.path("out.png"), size}), exit_misuse,
                       "not a size from 1 to 2048: " + size);
    }
}

TEST_F(ThumbnailerRefuses, AUriThatIsNoFileOfThisMachine) {
    expect_refusal(run_on("file://elsewhere/a.lwo"), exit_misuse,
                   "not a file of this machine: file://elsewhere/a.lwo");
    expect_refusal(run_on("file://localhosts/a.lwo"), exit_misuse,
                   "not a file of this machine: file://localhosts/a.lwo");
    for (const std::string path : {"/a%2", "/a%", "/a%zz", "/a%00.lwo", "/a%+1"}) {
        expect_refusal(run_on("file://" + path), exit_misuse, "not a file URI: " + path);
    }
}

TEST_F(ThumbnailerRefuses, WhatIsNoRegularFile) {
    expect_refusal(run_on("no\nfile"), exit_no_picture, "no?file: cannot open: No such file or directory");
    expect_refusal(run_on(""), exit_no_picture, "cannot open: No such file or directory");
    expect_refusal(run_on(files.folder()), exit_no_picture, "not a regular file");
    expect_refusal(run_on("/dev/zero"), exit_no_picture, "not a regular file");
    // Opening it would wait for a writer.
    ASSERT_EQ(mkfifo(files.path("pipe").c_str(), 0600), 0);
    expect_refusal(run_on(files.path("pipe")), exit_no_picture, "not a regular file");
}

TEST_F(ThumbnailerRefuses, AFileThatMayNotBeRead) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "root may read every file";
    }
    ASSERT_EQ(chmod(good_object().c_str(), 0), 0);
    expect_refusal(run_on(files.path("good.lwo")), exit_no_picture, "cannot open: Permission denied");
}

TEST_F(ThumbnailerRefuses, WhatIsNoObject) {
    const std::string no_polygons = "nincs polygon az objektben!";
    expect_refusal(run_on(files.write("o", "")), exit_no_picture, "This is not a(n) LW object");
    expect_refusal(run_on(files.write("o", form("ILBM", ""))), exit_no_picture, "This is not a(n) LW object");
    expect_refusal(run_on(files.write("o", form("LWOB", ""))), exit_no_picture, no_polygons);
    expect_refusal(run_on(files.write("o", form("LWOB", chunk("PNTS", point_data(four_points))))),
                   exit_no_picture, no_polygons);
}

TEST_F(ThumbnailerRefuses, AnObjectOfWhichNothingCanBeSeen) {
    const std::string reason = "nothing of the object can be seen";
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    const auto expect_nothing = [&](const std::vector<Vec3> &at, const std::vector<std::uint16_t> &words) {
        expect_refusal(run_on(files.write("o", object_file(at, words))), exit_no_picture, reason);
    };
    expect_nothing({{1, 2, 3}, {1, 2, 3}, {1, 2, 3}}, triangle);
    expect_nothing({{0, 0, 0}, {1, 1, 1}, {2, 2, 2}}, triangle);
    expect_nothing({{nan, nan, nan}, {nan, nan, nan}, {nan, nan, nan}}, triangle);
    expect_nothing({{0, 0, 0}, {infinity, 0, 0}, {0, 1, 0}}, triangle);
    expect_nothing(four_points, {3, 0, 2, 9, 1});
    expect_nothing(four_points, {3, 0});
}

TEST_F(ThumbnailerRefuses, OrDrawsEveryTrapThatAFuzzerBeginsWith) {
    ASSERT_EQ(
        run_tool("zelvo-fuzz-seeds", {files.path("seeds")}, {files.folder(), files.folder(), {}}).exit_code,
        0);
    int drawn = 0;
    int refused = 0;
    for (const auto &seed : std::filesystem::directory_iterator(files.path("seeds/object"))) {
        const ToolRun result = run_on(seed.path());
        if (result.exit_code == 0) {
            EXPECT_EQ(result.output + result.errors, "") << seed.path();
            EXPECT_TRUE(std::filesystem::remove(files.path("out.png"))) << seed.path();
            ++drawn;
        } else {
            expect_refusal(result, exit_no_picture, "");
            ++refused;
        }
    }
    EXPECT_GT(drawn, 5);
    EXPECT_GT(refused, 5);
}

TEST_F(ThumbnailerRefuses, AnObjectCutShortAnywhereOrDrawsIt) {
    const std::string whole = object_file(four_points, triangle);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const ToolRun result = run_on(files.write("o", whole.substr(0, length)));
        if (result.exit_code == 0) {
            EXPECT_TRUE(std::filesystem::remove(files.path("out.png"))) << length;
        } else {
            expect_refusal(result, exit_no_picture, "");
        }
    }
}

TEST_F(ThumbnailerRefuses, WhatClaimsMoreThanItsShareOfMemory) {
    if (is_sanitized) {
        GTEST_SKIP() << "the sanitizer needs the address space";
    }
    const std::string polygons = chunk("POLS", word_data(triangle));
    for (const std::uint32_t size : {0x7FFFFFF0U, 300U << 20, 250U << 20, 100U << 20, 60U << 20}) {
        const ToolRun result = run_on(
            files.write("o", form("LWOB", polygons + claiming("PNTS", size, point_data(four_points)))));
        expect_refusal(result, exit_no_picture, "");
        EXPECT_NE(result.errors.find("Couldn't allocate"), std::string::npos) << result.errors;
    }
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    EXPECT_LT(usage.ru_maxrss, 256 << 10);
}

TEST_F(ThumbnailerRefuses, WhatTakesLongerThanASecond) {
    if (is_sanitized) {
        GTEST_SKIP() << "the sanitizer needs more time";
    }
    // Squares that all fill the picture, each nearer than the one before, so that every pixel of each is
    // drawn.
    constexpr int squares = 15000;
    std::vector<Vec3> corners;
    std::vector<std::uint16_t> words;
    for (int i = 0; i < squares; ++i) {
        const auto z = static_cast<float>(-i) * 1e-4F;
        const auto first = static_cast<std::uint16_t>(corners.size());
        corners.insert(corners.end(), {{-1, -1, z}, {1, -1, z}, {1, 1, z}, {-1, 1, z}});
        const auto corner = [first](int c) { return static_cast<std::uint16_t>(first + c); };
        words.insert(words.end(), {4, corner(0), corner(3), corner(2), corner(1), 1});
    }
    const double before = time_of_children();
    const ToolRun result =
        run({files.write("o", object_file(corners, words)), files.path("out.png"), "2048"});
    EXPECT_LT(time_of_children() - before, 1.0);
    expect_refusal(result, exit_no_picture, "the object takes too long");
}

class ThumbnailerOutput : public ThumbnailerRefuses {};

TEST_F(ThumbnailerOutput, ThatCannotBeMadeIsAnError) {
    const std::string object = good_object();
    expect_refusal(run({object, files.path("no/out.png"), "64"}), exit_misuse,
                   "cannot write: No such file or directory");
    expect_refusal(run({object, files.folder(), "64"}), exit_misuse, "cannot write: Is a directory");
    expect_refusal(run({object, "", "64"}), exit_misuse, "cannot write: No such file or directory");
    expect_refusal(run({object, "/dev/full", "64"}), exit_misuse,
                   "/dev/full: cannot write: No space left on device");
    struct stat status {};
    ASSERT_EQ(stat("/dev/full", &status), 0);
    EXPECT_TRUE(S_ISCHR(status.st_mode));
}

TEST_F(ThumbnailerOutput, IsNotCutShortWhereADiskIsFull) {
    const std::string object = good_object();
    const std::string older = files.write("older.png", "older");
    files.write("empty.png", "");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limited{500, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limited);
    const ToolRun fresh = run({object, files.path("out.png"), "512"});
    const ToolRun replacing = run({object, older, "512"});
    const ToolRun filling = run({object, files.path("empty.png"), "512"});
    setrlimit(RLIMIT_FSIZE, &before);
    expect_refusal(filling, exit_misuse, "cannot write: File too large");
    EXPECT_EQ(files.read("empty.png"), "");
    expect_refusal(fresh, exit_misuse, "cannot write: File too large");
    expect_refusal(replacing, exit_misuse, "cannot write: File too large");
    EXPECT_EQ(files.read("older.png"), "older");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(files.folder()), {}), 3);
}

} // namespace
