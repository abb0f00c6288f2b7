// SPDX-License-Identifier: MIT
// Tests of volumes as folders and of opening files.
#include "platform/posix/volume_paths.h"

#include "platform/posix/replacing_file.h"

#include "support/temporary_files.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <sys/stat.h>

namespace {

struct Close {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

File open(const std::string &path, const char *mode) {
    return File(host::open_plain_file(path, mode));
}

/// The error of a failed save that open_plain_file reports; 0 if it reports none.
int reason_against(const std::string &path, const char *mode) {
    int reason = 0;
    std::FILE *file = host::open_plain_file(path, mode, [&reason](int error) { reason = error; });
    if (file != nullptr) {
        std::fputs("text", file);
        std::fclose(file);
    }
    return reason;
}

const host::Volumes volumes{{"ENV", "/settings/now"}, {"ENVARC", "/settings/always/"}};

} // namespace

TEST(PathOf, NameOnAVolumeIsInItsFolder) {
    EXPECT_EQ(host::path_of(volumes, "ENV:Zelvo.vars"), "/settings/now/Zelvo.vars");
    EXPECT_EQ(host::path_of(volumes, "ENVARC:Zelvo.vars"), "/settings/always/Zelvo.vars");
    EXPECT_EQ(host::path_of(volumes, "ENV:drawer/file"), "/settings/now/drawer/file");
}

TEST(PathOf, VolumeNamesIgnoreCase) {
    EXPECT_EQ(host::path_of(volumes, "env:Zelvo.vars"), "/settings/now/Zelvo.vars");
    EXPECT_EQ(host::path_of(volumes, "EnvArc:x"), "/settings/always/x");
}

TEST(PathOf, NameOfNoKnownVolumeIsAPathAlready) {
    EXPECT_EQ(host::path_of(volumes, "objects/cow.lwo"), "objects/cow.lwo");
    EXPECT_EQ(host::path_of(volumes, "Work:cow.lwo"), "Work:cow.lwo");
    EXPECT_EQ(host::path_of(volumes, "ENVIRONMENT:x"), "ENVIRONMENT:x");
    EXPECT_EQ(host::path_of({}, "ENV:x"), "ENV:x");
    EXPECT_EQ(host::path_of(volumes, ""), "");
}

TEST(OpenPlainFile, OpensFilesForReadingAndWriting) {
    const TemporaryFiles files;
    {
        const File file = open(files.path("new"), "w");
        ASSERT_NE(file, nullptr);
        std::fputs("text", file.get());
    }
    EXPECT_EQ(files.read("new"), "text");
    const File file = open(files.path("new"), "rb");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(std::fgetc(file.get()), 't');
}

TEST(OpenPlainFile, MissingFileIsNull) {
    const TemporaryFiles files;
    EXPECT_EQ(open(files.path("missing"), "rb"), nullptr);
    EXPECT_EQ(open("", "rb"), nullptr);
}

TEST(OpenPlainFile, FolderIsNull) {
    const TemporaryFiles files;
    EXPECT_EQ(open(files.folder(), "rb"), nullptr);
    EXPECT_EQ(open(files.folder(), "w"), nullptr);
}

TEST(OpenPlainFile, PipeIsNullWithoutWaiting) {
    const TemporaryFiles files;
    ASSERT_EQ(mkfifo(files.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(open(files.path("pipe"), "rb"), nullptr);
    EXPECT_EQ(open(files.path("pipe"), "w"), nullptr);
}

TEST(OpenPlainFile, CharacterDeviceIsAFile) {
    const File file = open("/dev/null", "rb");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(std::fgetc(file.get()), EOF);
}

TEST(OpenPlainFile, CharacterDeviceIsWrittenToDirectly) {
    EXPECT_EQ(reason_against("/dev/null", "w"), 0);
    EXPECT_EQ(reason_against("/dev/full", "w"), ENOSPC);
}

TEST(OpenPlainFile, ReportsWhyAFileIsNotSaved) {
    const TemporaryFiles files;
    ASSERT_EQ(mkfifo(files.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(reason_against(files.folder(), "w"), EISDIR);
    EXPECT_EQ(reason_against(files.path("pipe"), "w"), ENOTSUP);
    EXPECT_EQ(reason_against(files.path("missing/new"), "w"), ENOENT);
    EXPECT_EQ(reason_against(files.path("new"), "w"), 0);
}

TEST(OpenPlainFile, ReportsNothingWhenAFileCannotBeRead) {
    const TemporaryFiles files;
    EXPECT_EQ(reason_against(files.folder(), "rb"), 0);
    EXPECT_EQ(reason_against(files.path("missing"), "rb"), 0);
}

TEST(OpenPlainFile, UnfinishedFileDoesNotExistYet) {
    const TemporaryFiles files;
    files.write("old", "old");
    const File file = open(files.path("old"), "w");
    EXPECT_EQ(files.read("old"), "old");
}

TEST(ReportFailedSave, NamesTheFileItsPlaceAndTheReason) {
    testing::internal::CaptureStderr();
    const std::string text = host::report_failed_save("ENV:a", "/b/a", ENOSPC);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "zelvo: " + text + "\n");
    EXPECT_EQ(text, "ENV:a was not saved: No space left on device (/b/a)");
}

TEST(ReportFailedSave, NamesNoPlaceIfThereIsNone) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(host::report_failed_save("ENV:a", "", EPERM), "ENV:a was not saved: Operation not permitted");
    (void)testing::internal::GetCapturedStderr();
}

TEST(IsOnSettingsVolume, IsTrueOfEnvAndEnvarc) {
    EXPECT_TRUE(host::is_on_settings_volume("ENV:x"));
    EXPECT_TRUE(host::is_on_settings_volume("EnvArc:x"));
    EXPECT_FALSE(host::is_on_settings_volume("ENVIRONMENT:x"));
    EXPECT_FALSE(host::is_on_settings_volume("ENV"));
    EXPECT_FALSE(host::is_on_settings_volume("x/ENV:x"));
}

TEST(IsOnMissingVolume, IsTrueOnlyOfTheSettingsVolumes) {
    EXPECT_TRUE(host::is_on_missing_volume({}, "ENV:x"));
    EXPECT_TRUE(host::is_on_missing_volume({}, "envarc:x"));
    EXPECT_FALSE(host::is_on_missing_volume(volumes, "ENV:x"));
    EXPECT_TRUE(host::is_on_missing_volume({{"ENV", "/x"}}, "ENVARC:x"));
    EXPECT_FALSE(host::is_on_missing_volume({}, "Work:x"));
    EXPECT_FALSE(host::is_on_missing_volume({}, "ENV"));
}
