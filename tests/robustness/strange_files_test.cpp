// SPDX-License-Identifier: MIT
// Tests of paths that are no plain files, full disks, and folders without permission.
#include "measured_run.h"
#include "support/settings_text.h"
#include "support/temporary_files.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr long most_resident_mib = is_sanitized ? 1024 : 64;

const std::string settings = settings_text(
    {{"rotate", "0.500000"}, {"obj style", "4"}, {"dots", "1"}, {"width", "64"}, {"height", "48"}});

class StrangeFiles : public testing::Test {
protected:
    StrangeFiles() {
        files.write("Zelvo.vars", settings);
        std::filesystem::create_directory(files.path("folder"));
        mkfifo(files.path("fifo").c_str(), 0600);
        std::filesystem::create_symlink("loop", files.path("loop"));
        std::filesystem::create_symlink("nowhere", files.path("dangling"));
        setup = viewer_setup("cube", 3);
        setup.volumes["ENV"] = files.folder();
        setup.volumes["ENVARC"] = files.folder();
    }

    MeasuredRun run(RunOptions options = {}) {
        const MeasuredRun measured = run_measured(setup, std::move(options));
        EXPECT_GT(measured.resident_mib, 0) << "the run did not end by itself";
        EXPECT_LT(measured.resident_mib, most_resident_mib);
        EXPECT_EQ(measured.run.errors, expected_errors);
        EXPECT_TRUE(measured.run.held.empty());
        return measured;
    }

    void expect_refused(const std::string &text) {
        const ProgramRun refused = run().run;
        EXPECT_EQ(refused.exit_code, 20);
        EXPECT_TRUE(refused.output.ends_with(text)) << refused.output;
    }

    void expect_going_on() {
        const ProgramRun normal = run().run;
        EXPECT_EQ(normal.exit_code, 0);
        EXPECT_NE(normal.output.find("number of frames: 3\n"), std::string::npos) << normal.output;
    }

    /// Paths that cannot be opened for reading.
    std::vector<std::string> unopenable() const {
        return {files.path("folder"), files.path("fifo"), files.path("loop"), files.path("dangling"),
                files.path("Zelvo.vars/below")};
    }

    /// What the host reports for the keys "s" and "S" if neither of the files at these paths can be saved.
    static std::string not_saved(const std::string &reason, const std::string &env_path,
                                 const std::string &envarc_path) {
        const std::string env = "zelvo: ENV:Zelvo.vars was not saved: " + reason + " (" + env_path + ")\n";
        return env + env + "zelvo: ENVARC:Zelvo.vars was not saved: " + reason + " (" + envarc_path + ")\n";
    }

    const TemporaryFiles files;
    offscreen::Setup setup;
    std::string expected_errors;
};

TEST_F(StrangeFiles, EndTheProgramAsObjects) {
    for (const std::string &path : unopenable()) {
        SCOPED_TRACE(path);
        setup.command_line = {path};
        expect_refused("File open error\n");
    }
    for (const char *device : {"/dev/zero", "/dev/full", "/dev/null"}) {
        SCOPED_TRACE(device);
        setup.command_line = {device};
        expect_refused("This is not a(n) LW object\n");
    }
}

TEST_F(StrangeFiles, EndTheProgramOrAreReadAsTextures) {
    for (const std::string &path : unopenable()) {
        SCOPED_TRACE(path);
        setup.stand_ins["Zelvo_envmap.chunky"] = path;
        expect_refused("envmap file open error\n");
    }
    for (const char *device : {"/dev/zero", "/dev/full", "/dev/null"}) {
        SCOPED_TRACE(device);
        setup.stand_ins["Zelvo_envmap.chunky"] = device;
        expect_going_on();
    }
}

TEST_F(StrangeFiles, EndTheProgramAsTexturesChosenByKey) {
    setup.events = {key(2, 't')};
    for (const std::string &path : unopenable()) {
        SCOPED_TRACE(path);
        setup.answers = {{offscreen::FileAnswer{"", path}, {}}};
        expect_refused("envmap file open error\n");
    }
    setup.answers = {{offscreen::FileAnswer{"/dev", "zero"}, {}}};
    expect_going_on();
}

TEST_F(StrangeFiles, CountAsMissingOrEmptySettings) {
    for (const std::string &path : unopenable()) {
        SCOPED_TRACE(path);
        setup.stand_ins["ENV:Zelvo.vars"] = path;
        // The screen-mode requester appears instead.
        EXPECT_NE(run().run.output.find("display parameters: "), std::string::npos);
        expect_going_on();
    }
    for (const char *device : {"/dev/zero", "/dev/full", "/dev/null"}) {
        SCOPED_TRACE(device);
        setup.stand_ins["ENV:Zelvo.vars"] = device;
        expect_going_on();
    }
}

TEST_F(StrangeFiles, AreLeftAloneBySavingSettings) {
    setup.events = {key(2, 's'), key(2, 'S')};
    const std::pair<std::string, std::string> refusals[] = {
        {files.path("folder"), "Is a directory"},
        {files.path("fifo"), "Operation not supported"},
        {files.path("Zelvo.vars/below"), "Not a directory"},
        {files.path("loop"), "Too many levels of symbolic links"},
        {"/dev/full", "No space left on device"},
        {"/dev/null", ""},
    };
    for (const auto &[path, reason] : refusals) {
        SCOPED_TRACE(path);
        setup.stand_ins["ENV:Zelvo.vars"] = path;
        setup.stand_ins["ENVARC:Zelvo.vars"] = path;
        expected_errors = reason.empty() ? "" : not_saved(reason, path, path);
        expect_going_on();
    }
    struct stat status {};
    EXPECT_TRUE(stat("/dev/full", &status) == 0 && S_ISCHR(status.st_mode));
    EXPECT_TRUE(stat(files.path("fifo").c_str(), &status) == 0 && S_ISFIFO(status.st_mode));
    EXPECT_TRUE(std::filesystem::is_directory(files.path("folder")));
}

TEST_F(StrangeFiles, SettingsAreNotSavedInAFolderThatTakesNoFiles) {
    // Not even the superuser can create a file there.
    setup.volumes["ENV"] = "/proc/self";
    setup.volumes["ENVARC"] = files.path("not-there");
    setup.events = {key(2, 's'), key(2, 'S')};
    expected_errors =
        not_saved("No such file or directory", "/proc/self/Zelvo.vars", files.path("not-there/Zelvo.vars"));
    expect_going_on();
}

TEST_F(StrangeFiles, DanglingLinkIsKeptAndItsTargetCreated) {
    setup.stand_ins["ENV:Zelvo.vars"] = files.path("dangling");
    setup.events = {key(2, 's')};
    expect_going_on();
    EXPECT_EQ(std::filesystem::read_symlink(files.path("dangling")), "nowhere");
    EXPECT_TRUE(files.read("nowhere").ends_with("file! ***"));
}

TEST_F(StrangeFiles, SettingsInAReadOnlyFolderAreWrittenInPlace) {
    const std::string folder = files.path("read-only");
    std::filesystem::create_directory(folder);
    files.write("read-only/Zelvo.vars", settings);
    chmod(files.folder().c_str(), 0711);
    chmod(folder.c_str(), 0555);
    setup.volumes["ENV"] = folder;
    setup.events = {key(1, '4'), key(2, 's')};
    // Nothing is read-only for the superuser, who becomes another user while the settings are saved.
    setup.on_picture = [](const offscreen::Picture &picture) {
        constexpr uid_t nobody = 65534;
        if (getuid() == 0 && seteuid(picture.pass == 1 ? nobody : picture.pass == 3 ? 0 : geteuid()) != 0) {
            std::abort();
        }
    };
    // First the file is read-only as well, then writable.
    chmod(files.path("read-only/Zelvo.vars").c_str(), 0444);
    expected_errors = "zelvo: ENV:Zelvo.vars was not saved: Permission denied (" + folder + "/Zelvo.vars)\n";
    expect_going_on();
    EXPECT_EQ(files.read("read-only/Zelvo.vars"), settings);

    chmod(files.path("read-only/Zelvo.vars").c_str(), 0666);
    expected_errors = "";
    expect_going_on();
    EXPECT_TRUE(files.read("read-only/Zelvo.vars").starts_with("gammas: 1.100000 "));
    chmod(folder.c_str(), 0700);
}

/// Makes writing fail as on a full disk from a file's 200th byte on.
void fill_disk() {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = 200;
    setrlimit(RLIMIT_FSIZE, &limit);
}

TEST_F(StrangeFiles, FullDiskKeepsTheOldSettings) {
    setup.events = {key(1, '4'), key(2, 's'), key(2, 'S')};
    // The run's own output also goes to files. It stays short enough until the disk has room again.
    setup.last_pass = 0;
    expected_errors = not_saved("File too large", files.path("Zelvo.vars"), files.path("Zelvo.vars"));
    RunOptions options;
    options.before = fill_disk;
    setup.on_picture = [](const offscreen::Picture &picture) {
        if (picture.pass == 3) {
            rlimit limit{};
            getrlimit(RLIMIT_FSIZE, &limit);
            limit.rlim_cur = limit.rlim_max;
            setrlimit(RLIMIT_FSIZE, &limit);
            offscreen::request_quit();
        }
    };
    EXPECT_EQ(run(options).run.exit_code, 0);
    EXPECT_EQ(files.read("Zelvo.vars"), settings);
    std::size_t others = 0;
    for (const auto &entry : std::filesystem::directory_iterator(files.folder())) {
        others += entry.path().filename().string().find("Zelvo.vars.") != std::string::npos ? 1U : 0U;
    }
    EXPECT_EQ(others, 0U) << "a part of a file remains";

    expected_errors = "";
    // When the disk has room again, the same keys save the settings.
    setup.on_picture = nullptr;
    setup.last_pass = 3;
    EXPECT_EQ(run().run.exit_code, 0);
    EXPECT_TRUE(files.read("Zelvo.vars").starts_with("gammas: 1.100000 "));
}

} // namespace
