// SPDX-License-Identifier: MIT
// Files that replace an older one only when they are whole.
#include "platform/shared/safe_file.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class SafeFile : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "zelvo-safe-file-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
        path = folder / "settings";
    }

    void TearDown() override { fs::remove_all(folder); }

    void write_old() { std::ofstream(path) << "old"; }

    static std::string text_of(const fs::path &file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    long files_in_folder() const {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    }

    fs::path folder;
    fs::path path;
};

} // namespace

TEST_F(SafeFile, IsThereOnlyWhenItIsClosed) {
    std::FILE *file = host::open_replacing(path);
    ASSERT_NE(file, nullptr);
    std::fputs("new", file);
    std::fflush(file);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(std::fclose(file), 0);
    EXPECT_EQ(text_of(path), "new");
    EXPECT_EQ(files_in_folder(), 1);
}

TEST_F(SafeFile, KeepsTheOldFileUntilTheNewOneIsClosed) {
    write_old();
    std::FILE *file = host::open_replacing(path);
    std::fputs("new", file);
    std::fflush(file);
    EXPECT_EQ(text_of(path), "old");
    EXPECT_EQ(std::fclose(file), 0);
    EXPECT_EQ(text_of(path), "new");
}

TEST_F(SafeFile, FollowsALinkToTheFileThatItReplaces) {
    write_old();
    const fs::path link = folder / "link";
    fs::create_symlink(path, link);
    std::FILE *file = host::open_replacing(link);
    std::fputs("new", file);
    EXPECT_EQ(std::fclose(file), 0);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(text_of(path), "new");
}

TEST_F(SafeFile, KeepsTheOldFilesMode) {
    write_old();
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    std::FILE *file = host::open_replacing(path);
    EXPECT_EQ(std::fclose(file), 0);
    EXPECT_EQ(fs::status(path).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(SafeFile, GivesANewFileTheUsualMode) {
    const mode_t mask = umask(027);
    std::FILE *file = host::open_replacing(path);
    EXPECT_EQ(std::fclose(file), 0);
    umask(mask);
    EXPECT_EQ(fs::status(path).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(SafeFile, IsNotOpenedInAFolderThatDoesNotExist) {
    EXPECT_EQ(host::open_replacing(folder / "missing" / "settings"), nullptr);
}

TEST_F(SafeFile, AFailingWriteKeepsTheOldFileAndRemovesThePartialOne) {
    write_old();
    // A file that may not grow fails just as one on a full disk does.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    rlimit limited = unlimited;
    limited.rlim_cur = 1000;
    setrlimit(RLIMIT_FSIZE, &limited);
    std::FILE *file = host::open_replacing(path);
    ASSERT_NE(file, nullptr);
    const std::string much(100000, 'x');
    std::fputs(much.c_str(), file);
    const int result = std::fclose(file);
    setrlimit(RLIMIT_FSIZE, &unlimited);
    EXPECT_EQ(result, EOF);
    EXPECT_EQ(text_of(path), "old");
    EXPECT_EQ(files_in_folder(), 1);
}

TEST_F(SafeFile, AWriteThatFailsOnlyAtTheEndKeepsTheOldFileToo) {
    write_old();
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    rlimit limited = unlimited;
    limited.rlim_cur = 2;
    std::FILE *file = host::open_replacing(path);
    ASSERT_NE(file, nullptr);
    std::fputs("new", file);
    setrlimit(RLIMIT_FSIZE, &limited);
    const int result = std::fclose(file);
    setrlimit(RLIMIT_FSIZE, &unlimited);
    EXPECT_EQ(result, EOF);
    EXPECT_EQ(text_of(path), "old");
    EXPECT_EQ(files_in_folder(), 1);
}
