// SPDX-License-Identifier: MIT
// Where the settings of a desktop's user are.
#include "platform/sdl/file_names.h"
#include "platform/sdl/folders.h"
#include "platform/sdl/host.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class Folders : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "zelvo-folders-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        root = pattern;
        runtime = root / "runtime";
        ASSERT_EQ(mkdir(runtime.c_str(), 0700), 0);
        setenv("HOME", root.c_str(), 1);
        setenv("XDG_CONFIG_HOME", (root / "config").c_str(), 1);
        setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
        setenv("TMPDIR", root.c_str(), 1);
    }

    void TearDown() override {
        unsetenv("TMPDIR");
        fs::remove_all(root);
    }

    static mode_t mode_of(const fs::path &path) {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    fs::path private_folder() const { return root / ("zelvo-" + std::to_string(geteuid())); }

    fs::path root;
    fs::path runtime;
};

} // namespace

TEST_F(Folders, LastingSettingsAreInTheConfigurationFolder) {
    EXPECT_EQ(desktop::lasting_settings_folder(), (root / "config" / "zelvo").string());
}

TEST_F(Folders, LastingSettingsAreBelowTheHomeByDefault) {
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(desktop::lasting_settings_folder(), (root / ".config" / "zelvo").string());
}

TEST_F(Folders, ARelativeConfigurationFolderIsIgnored) {
    setenv("XDG_CONFIG_HOME", "config", 1);
    EXPECT_EQ(desktop::lasting_settings_folder(), (root / ".config" / "zelvo").string());
}

TEST_F(Folders, ThisLoginsFolderIsMadePrivate) {
    EXPECT_EQ(desktop::session_settings_folder(), (runtime / "zelvo").string());
    EXPECT_EQ(mode_of(runtime / "zelvo"), 0700U);
}

TEST_F(Folders, ThisLoginsFolderBeginsAsACopyOfTheLastingSettings) {
    fs::create_directories(root / "config" / "zelvo");
    std::ofstream(root / "config" / "zelvo" / "Zelvo.vars") << "kept";
    std::ofstream(root / "config" / "zelvo" / ".Zelvo.vars.unfinished") << "not kept";
    ASSERT_TRUE(desktop::session_settings_folder());
    EXPECT_TRUE(fs::exists(runtime / "zelvo" / "Zelvo.vars"));
    EXPECT_FALSE(fs::exists(runtime / "zelvo" / ".Zelvo.vars.unfinished"));
    EXPECT_EQ(std::distance(fs::directory_iterator(runtime), fs::directory_iterator()), 1);
}

TEST_F(Folders, ALaterUseCopiesNothing) {
    ASSERT_TRUE(desktop::session_settings_folder());
    fs::create_directories(root / "config" / "zelvo");
    std::ofstream(root / "config" / "zelvo" / "Zelvo.vars") << "late";
    ASSERT_TRUE(desktop::session_settings_folder());
    EXPECT_FALSE(fs::exists(runtime / "zelvo" / "Zelvo.vars"));
}

TEST_F(Folders, WithoutARuntimeFolderAPrivateOneIsMade) {
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(desktop::session_settings_folder(), private_folder().string());
    EXPECT_EQ(mode_of(private_folder()), 0700U);
}

TEST_F(Folders, ARuntimeFolderThatOthersMayWriteToIsNotUsed) {
    ASSERT_EQ(chmod(runtime.c_str(), 0777), 0);
    EXPECT_EQ(desktop::session_settings_folder(), private_folder().string());
}

TEST_F(Folders, ALinkIsRefused) {
    fs::create_directory_symlink(runtime, private_folder());
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_FALSE(desktop::session_settings_folder());
}

TEST_F(Folders, AFileIsRefused) {
    std::ofstream(private_folder()) << "in the way";
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_FALSE(desktop::session_settings_folder());
}

TEST_F(Folders, AFolderThatOthersMayWriteToIsRefused) {
    fs::create_directory(private_folder());
    ASSERT_EQ(chmod(private_folder().c_str(), 0777), 0);
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_FALSE(desktop::session_settings_folder());
}

TEST_F(Folders, SomebodyElsesFolderIsRefused) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give a folder away";
    }
    fs::create_directory(private_folder());
    constexpr uid_t somebody_else = 65534;
    ASSERT_EQ(chown(private_folder().c_str(), somebody_else, somebody_else), 0);
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_FALSE(desktop::session_settings_folder());
}

TEST_F(Folders, TheLastingFolderIsMadeForWritingAlone) {
    const std::string path = (root / "config" / "zelvo" / "Zelvo.vars").string();
    EXPECT_EQ(desktop::path_of_name("ENVARC:Zelvo.vars", false), path);
    EXPECT_FALSE(fs::exists(root / "config"));
    EXPECT_EQ(desktop::path_of_name("ENVARC:Zelvo.vars", true), path);
    EXPECT_EQ(mode_of(root / "config" / "zelvo"), 0700U);
}

TEST_F(Folders, OtherNamesArePathsAlready) {
    EXPECT_EQ(desktop::path_of_name("objects/knot.lwo", false), "objects/knot.lwo");
    EXPECT_EQ(desktop::path_of_name("ENVIRONMENT.lwo", false), "ENVIRONMENT.lwo");
}

TEST_F(Folders, BlanksAreReadFromTheirWrittenForm) {
    const std::string folder = root.string();
    EXPECT_EQ(desktop::path_of_name(folder + "/a%20b.chunky", false), folder + "/a b.chunky");
    EXPECT_EQ(desktop::path_of_name(folder + "/a%2520b.chunky", false), folder + "/a%20b.chunky");
    EXPECT_EQ(desktop::path_of_name("ENVARC:a%20b", false), (root / "config" / "zelvo" / "a b").string());
}

TEST_F(Folders, ANameThatLooksLikeAWrittenFormIsItselfWhereOnlyThatExists) {
    const std::string looking_like_it = (root / "a%20b.chunky").string();
    const std::string meant = (root / "a b.chunky").string();
    std::ofstream(looking_like_it) << "x";
    EXPECT_EQ(desktop::path_of_name(looking_like_it, false), looking_like_it);
    std::ofstream{meant} << "x";
    EXPECT_EQ(desktop::path_of_name(looking_like_it, false), meant);
}

TEST_F(Folders, AnInstalledFileIsOpenedOnlyWhereThereIsNoneAtHand) {
    const fs::path before = fs::current_path();
    fs::current_path(root);
    const std::string name = "Zelvo_envmap.chunky";
    EXPECT_EQ(desktop::path_of_name(name, false), name);
    desktop::set_up({{}, {name}});
    EXPECT_EQ(desktop::path_of_name(name, false), desktop::installed_data_path(name));
    std::ofstream(root / name) << "here";
    EXPECT_EQ(desktop::path_of_name(name, false), name);
    desktop::set_up({});
    fs::current_path(before);
}
