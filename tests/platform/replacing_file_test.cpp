// SPDX-License-Identifier: MIT
// Tests of files that replace an older one only when they are complete.
#include "platform/posix/replacing_file.h"

#include "support/temporary_files.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// The faults of the system's calls.
struct Refusals {
    /// The errno with which these calls fail; 0 if they succeed.
    int fsync = 0;
    int rename = 0;
    int close = 0;
    /// Reserving room, which takes a part of it before it fails, as on a disk that fills up.
    int fallocate = 0;
    /// Whether each write is interrupted before its first byte.
    bool interrupts_writes = false;
    /// The most bytes that a write accepts.
    std::size_t most_bytes = 1 << 20;
};
Refusals refusals;

/// The calls so far.
std::vector<std::string> calls;

int refuse(int error) {
    errno = error;
    return -1;
}

} // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the linker's.
extern "C" int __real_fsync(int descriptor);
extern "C" int __real_rename(const char *from, const char *to);
extern "C" int __real_close(int descriptor);
extern "C" int __real_posix_fallocate(int descriptor, off_t start, off_t length);
extern "C" ssize_t __real_write(int descriptor, const void *bytes, std::size_t count);

extern "C" int __wrap_fsync(int descriptor) {
    calls.emplace_back("fsync");
    return refusals.fsync != 0 ? refuse(refusals.fsync) : __real_fsync(descriptor);
}

extern "C" int __wrap_rename(const char *from, const char *to) {
    calls.emplace_back("rename");
    return refusals.rename != 0 ? refuse(refusals.rename) : __real_rename(from, to);
}

extern "C" int __wrap_posix_fallocate(int descriptor, off_t start, off_t length) {
    if (refusals.fallocate != 0) {
        return ftruncate(descriptor, start + length - 1) == 0 ? refusals.fallocate : errno;
    }
    return __real_posix_fallocate(descriptor, start, length);
}

extern "C" int __wrap_close(int descriptor) {
    const int result = __real_close(descriptor);
    return refusals.close != 0 ? refuse(refusals.close) : result;
}

extern "C" ssize_t __wrap_write(int descriptor, const void *bytes, std::size_t count) {
    if (refusals.interrupts_writes && (calls.empty() || calls.back() != "interrupted")) {
        calls.emplace_back("interrupted");
        return refuse(EINTR);
    }
    calls.emplace_back("write");
    return __real_write(descriptor, bytes, std::min(count, refusals.most_bytes));
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

/// Another user while it exists, because nothing is read-only for the superuser.
class AsSomebodyElse {
public:
    AsSomebodyElse() : is_superuser(geteuid() == 0) {
        if (is_superuser && seteuid(65534) != 0) {
            ADD_FAILURE() << "cannot become another user";
        }
    }
    ~AsSomebodyElse() {
        if (is_superuser && seteuid(0) != 0) {
            std::abort();
        }
    }
    AsSomebodyElse(const AsSomebodyElse &) = delete;
    AsSomebodyElse &operator=(const AsSomebodyElse &) = delete;

private:
    bool is_superuser;
};

constexpr fs::perms for_reading = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
constexpr fs::perms for_everybody =
    for_reading | fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
constexpr fs::perms for_passing = fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;

/// While it exists, no file of the process can grow beyond a size: writing fails as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit limited = before;
        limited.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before); }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit before{};
};

class ReplacingFile : public testing::Test {
protected:
    void SetUp() override {
        refusals = {};
        calls.clear();
    }

    void TearDown() override {
        refusals = {};
        fs::permissions(folder, fs::perms::owner_all);
    }

    /// Saves this text; whether that succeeded. `reason` says why it failed.
    bool save(const std::string &text, const fs::path &to) {
        reason = 0;
        failures = 0;
        std::FILE *file = host::open_for_saving(to, [this](int error) {
            reason = error;
            ++failures;
        });
        if (file == nullptr) {
            return false;
        }
        std::fputs(text.c_str(), file);
        return std::fclose(file) == 0;
    }
    bool save(const std::string &text) { return save(text, path); }

    /// Gives the file this mode, and makes its folder read-only.
    void close_folder(fs::perms of_file) {
        fs::permissions(path, of_file);
        fs::permissions(folder, fs::perms::owner_read | for_passing);
    }

    void write_old() { std::ofstream(path) << "old"; }

    static std::string text_of(const fs::path &file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    long files_in_folder() const {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    }

    TemporaryFiles files;
    fs::path folder = files.folder();
    fs::path path = folder / "settings";
    int reason = 0;
    int failures = 0;
};

} // namespace

TEST_F(ReplacingFile, ExistsOnlyAfterItIsClosed) {
    std::FILE *file = host::open_for_saving(path);
    ASSERT_NE(file, nullptr);
    std::fputs("new", file);
    std::fflush(file);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(std::fclose(file), 0);
    EXPECT_EQ(text_of(path), "new");
    EXPECT_EQ(files_in_folder(), 1);
}

TEST_F(ReplacingFile, KeepsTheOldFileUntilTheNewOneIsClosed) {
    write_old();
    std::FILE *file = host::open_for_saving(path);
    std::fputs("new", file);
    std::fflush(file);
    EXPECT_EQ(text_of(path), "old");
    EXPECT_EQ(std::fclose(file), 0);
    EXPECT_EQ(text_of(path), "new");
}

TEST_F(ReplacingFile, FollowsALinkToTheFileThatItReplaces) {
    write_old();
    const fs::path link = folder / "link";
    fs::create_symlink(path, link);
    std::FILE *file = host::open_for_saving(link);
    std::fputs("new", file);
    EXPECT_EQ(std::fclose(file), 0);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(text_of(path), "new");
}

TEST_F(ReplacingFile, KeepsTheOldFilesMode) {
    write_old();
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    std::FILE *file = host::open_for_saving(path);
    EXPECT_EQ(std::fclose(file), 0);
    EXPECT_EQ(fs::status(path).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(ReplacingFile, GivesANewFileTheDefaultMode) {
    const mode_t mask = umask(027);
    std::FILE *file = host::open_for_saving(path);
    EXPECT_EQ(std::fclose(file), 0);
    umask(mask);
    EXPECT_EQ(fs::status(path).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(ReplacingFile, IsNotOpenedInAFolderThatDoesNotExist) {
    EXPECT_EQ(host::open_for_saving(folder / "missing" / "settings"), nullptr);
}

TEST_F(ReplacingFile, AFailingWriteKeepsTheOldFileAndRemovesThePartialOne) {
    write_old();
    const FileSizeLimit limit(1000);
    EXPECT_FALSE(save(std::string(100000, 'x')));
    EXPECT_EQ(reason, EFBIG);
    EXPECT_EQ(text_of(path), "old");
    EXPECT_EQ(files_in_folder(), 1);
}

TEST_F(ReplacingFile, AWriteThatFailsOnlyAtTheEndKeepsTheOldFileToo) {
    write_old();
    std::FILE *file = host::open_for_saving(path);
    ASSERT_NE(file, nullptr);
    std::fputs("new", file);
    const FileSizeLimit limit(2);
    EXPECT_EQ(std::fclose(file), EOF);
    EXPECT_EQ(text_of(path), "old");
    EXPECT_EQ(files_in_folder(), 1);
}

TEST_F(ReplacingFile, IsCompleteWhenItTakesItsPlace) {
    ASSERT_TRUE(save("new"));
    EXPECT_EQ(calls, (std::vector<std::string>{"write", "fsync", "rename"}));
}

TEST_F(ReplacingFile, ContinuesAfterAPartialWrite) {
    refusals.most_bytes = 3;
    refusals.interrupts_writes = true;
    const std::string text = "ten bytes.";
    ASSERT_TRUE(save(text));
    EXPECT_EQ(text_of(path), text);
    write_old();
    close_folder(for_everybody);
    const AsSomebodyElse somebody;
    ASSERT_TRUE(save(text));
    EXPECT_EQ(text_of(path), text);
}

TEST_F(ReplacingFile, ReportsOnceWhyItWasNotSaved) {
    for (const auto &[refused, error] :
         {std::pair(&Refusals::fsync, EIO), {&Refusals::rename, ENOSPC}, {&Refusals::close, EDQUOT}}) {
        write_old();
        refusals = {};
        refusals.*refused = error;
        EXPECT_FALSE(save("new"));
        EXPECT_EQ(reason, error);
        EXPECT_EQ(errno, error);
        EXPECT_EQ(failures, 1);
        EXPECT_EQ(text_of(path), "old");
        EXPECT_EQ(files_in_folder(), 1);
    }
}

TEST_F(ReplacingFile, ReportsOnceWhyItWasNotOpened) {
    EXPECT_FALSE(save("new", folder / "missing" / "settings"));
    EXPECT_EQ(reason, ENOENT);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(failures, 1);
    EXPECT_FALSE(save("new", folder / ""));
    EXPECT_FALSE(save("new", ""));
    EXPECT_EQ(reason, ENOENT);
    EXPECT_FALSE(save("new", folder));
    EXPECT_EQ(reason, EISDIR);
    EXPECT_EQ(files_in_folder(), 0);
}

TEST_F(ReplacingFile, ReportsNothingWhenItWasSaved) {
    EXPECT_TRUE(save("new"));
    EXPECT_EQ(failures, 0);
}

TEST_F(ReplacingFile, NeedsNoCallbackForFailures) {
    EXPECT_EQ(host::open_for_saving(folder / "missing" / "settings"), nullptr);
    std::FILE *file = host::open_for_saving("/dev/full");
    std::fputs("new", file);
    EXPECT_EQ(std::fclose(file), EOF);
}

TEST_F(ReplacingFile, IsNotReplacedIfReadOnly) {
    write_old();
    fs::permissions(folder, fs::perms::all);
    fs::permissions(path, for_reading);
    const AsSomebodyElse somebody;
    EXPECT_FALSE(save("new"));
    EXPECT_EQ(reason, EACCES);
    EXPECT_EQ(text_of(path), "old");
    EXPECT_EQ(files_in_folder(), 1);
}

TEST_F(ReplacingFile, IsWrittenInPlaceIfItsFolderIsReadOnly) {
    write_old();
    close_folder(for_everybody);
    const ino_t file_before = [&] {
        struct stat status {};
        stat(path.c_str(), &status);
        return status.st_ino;
    }();
    {
        const AsSomebodyElse somebody;
        EXPECT_TRUE(save("a longer text"));
        EXPECT_EQ(text_of(path), "a longer text");
        EXPECT_TRUE(save("short"));
        EXPECT_EQ(text_of(path), "short");
        EXPECT_TRUE(save(""));
        EXPECT_EQ(text_of(path), "");
    }
    struct stat status {};
    stat(path.c_str(), &status);
    EXPECT_EQ(status.st_ino, file_before);
    EXPECT_EQ(files_in_folder(), 1);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "fsync"), 3);
}

TEST_F(ReplacingFile, IsLeftAloneIfItAndItsFolderAreReadOnly) {
    write_old();
    close_folder(for_reading);
    const AsSomebodyElse somebody;
    EXPECT_FALSE(save("new"));
    EXPECT_EQ(reason, EACCES);
    EXPECT_FALSE(save("new", folder / "another"));
    EXPECT_EQ(reason, EACCES);
    EXPECT_EQ(text_of(path), "old");
}

TEST_F(ReplacingFile, IsWrittenInPlaceIfItCannotBeReplaced) {
    // Another user's file in a folder where only owners may replace files, or a mount point.
    for (const int error : {EPERM, EACCES, EBUSY, EROFS}) {
        write_old();
        refusals.rename = error;
        EXPECT_TRUE(save("new"));
        EXPECT_EQ(failures, 0);
        EXPECT_EQ(text_of(path), "new");
        EXPECT_EQ(files_in_folder(), 1);
    }
    fs::remove(path);
    refusals.rename = EPERM;
    EXPECT_FALSE(save("new"));
    EXPECT_EQ(reason, EPERM);
    EXPECT_EQ(files_in_folder(), 0);
}

TEST_F(ReplacingFile, IsNotTouchedInPlaceOnAFullDisk) {
    write_old();
    close_folder(for_everybody);
    const AsSomebodyElse somebody;
    const FileSizeLimit limit(5);
    EXPECT_FALSE(save("a longer text"));
    EXPECT_EQ(reason, EFBIG);
    EXPECT_EQ(text_of(path), "old");
}

TEST_F(ReplacingFile, KeepsItsLengthIfThereIsRoomForAPartOnly) {
    write_old();
    close_folder(for_everybody);
    refusals.fallocate = ENOSPC;
    const AsSomebodyElse somebody;
    EXPECT_FALSE(save("a longer text"));
    EXPECT_EQ(reason, ENOSPC);
    EXPECT_EQ(text_of(path), "old");
}

TEST_F(ReplacingFile, InPlaceReportsADiskError) {
    for (const auto &[refused, error] : {std::pair(&Refusals::fsync, EIO), {&Refusals::close, EDQUOT}}) {
        fs::permissions(folder, fs::perms::owner_all);
        write_old();
        close_folder(for_everybody);
        refusals = {};
        refusals.*refused = error;
        const AsSomebodyElse somebody;
        EXPECT_FALSE(save("new"));
        refusals = {};
        EXPECT_EQ(reason, error);
    }
}

TEST_F(ReplacingFile, DeviceIsWrittenToDirectly) {
    EXPECT_TRUE(save("new", "/dev/null"));
    EXPECT_FALSE(save("new", "/dev/full"));
    EXPECT_EQ(reason, ENOSPC);
}

TEST_F(ReplacingFile, CreatesTheTargetOfALink) {
    fs::create_directory(folder / "elsewhere");
    fs::create_symlink("elsewhere/second", folder / "first");
    fs::create_symlink(folder / "elsewhere" / "third", folder / "elsewhere" / "second");
    fs::create_symlink("../settings", folder / "elsewhere" / "third");
    EXPECT_TRUE(save("new", folder / "first"));
    EXPECT_EQ(text_of(path), "new");
    for (const char *link : {"first", "elsewhere/second", "elsewhere/third"}) {
        EXPECT_TRUE(fs::is_symlink(folder / link)) << link;
    }
    EXPECT_TRUE(save("newer", folder / "first"));
    EXPECT_EQ(text_of(path), "newer");
    EXPECT_TRUE(fs::is_symlink(folder / "elsewhere" / "third"));
}

TEST_F(ReplacingFile, IsNotCreatedThroughABrokenOrCircularLink) {
    fs::create_symlink("missing/settings", folder / "nowhere");
    EXPECT_FALSE(save("new", folder / "nowhere"));
    EXPECT_EQ(reason, ENOENT);
    fs::create_symlink("there", folder / "here");
    fs::create_symlink("here", folder / "there");
    EXPECT_FALSE(save("new", folder / "here"));
    EXPECT_EQ(reason, ELOOP);
    fs::create_symlink("itself", folder / "itself");
    EXPECT_FALSE(save("new", folder / "itself"));
    EXPECT_EQ(reason, ELOOP);
    EXPECT_EQ(files_in_folder(), 4);
}

TEST_F(ReplacingFile, FollowsAsManyLinksAsTheSystem) {
    for (int link = 0; link < 40; ++link) {
        fs::create_symlink(link == 0 ? "settings" : "link" + std::to_string(link - 1),
                           folder / ("link" + std::to_string(link)));
    }
    EXPECT_TRUE(save("new", folder / "link39"));
    EXPECT_EQ(text_of(folder / "link39"), "new");
}

TEST_F(ReplacingFile, KeepsTheModeOfALinksTarget) {
    write_old();
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("settings", folder / "link");
    EXPECT_TRUE(save("new", folder / "link"));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    const fs::perms every_bit = fs::perms::all | fs::perms::sticky_bit;
    fs::permissions(path, every_bit);
    EXPECT_TRUE(save("new"));
    EXPECT_EQ(fs::status(path).permissions(), every_bit);
}

TEST_F(ReplacingFile, IsAPrivateHiddenFileUntilItIsClosed) {
    std::FILE *file = host::open_for_saving(path);
    ASSERT_EQ(files_in_folder(), 1);
    const std::string name = fs::directory_iterator(folder)->path().filename();
    EXPECT_TRUE(name.starts_with(".settings.")) << name;
    // A program that is started meanwhile does not inherit the descriptor.
    int open_files = 0;
    for (int descriptor = 3; descriptor < 100; ++descriptor) {
        const int flags = fcntl(descriptor, F_GETFD);
        std::error_code error;
        const fs::path opened = fs::read_symlink("/proc/self/fd/" + std::to_string(descriptor), error);
        if (opened.parent_path() == folder) {
            ++open_files;
            EXPECT_NE(flags & FD_CLOEXEC, 0);
        }
    }
    EXPECT_EQ(open_files, 1);
    EXPECT_EQ(std::fclose(file), 0);
}

TEST_F(ReplacingFile, LeavesNoDescriptorOpen) {
    const auto open_files = [] {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    };
    const auto before = open_files();
    write_old();
    EXPECT_TRUE(save("new"));
    EXPECT_TRUE(save("new", folder / "another"));
    EXPECT_TRUE(save("new", "/dev/null"));
    EXPECT_FALSE(save("new", folder / "missing" / "settings"));
    EXPECT_FALSE(save("new", "/dev/full"));
    refusals.fsync = EIO;
    EXPECT_FALSE(save("new"));
    refusals = {};
    refusals.rename = EPERM;
    EXPECT_TRUE(save("new"));
    EXPECT_EQ(open_files(), before);
}

TEST_F(ReplacingFile, IsFoundFromTheCurrentFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(folder);
    EXPECT_TRUE(save("new", "settings"));
    EXPECT_EQ(text_of("settings"), "new");
    EXPECT_EQ(files_in_folder(), 1);
    fs::current_path(before);
}
