// SPDX-License-Identifier: MIT
// Tests of the settings folders on a desktop.
#include "platform/posix/folders.h"
#include "platform/sdl/file_names.h"
#include "platform/sdl/host.h"
#include "support/temporary_files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <pwd.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// Called just before the next rename, to act as another process.
std::function<void()> before_rename;

} // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the linker's.
extern "C" int __real_rename(const char *from, const char *to);

extern "C" int __wrap_rename(const char *from, const char *to) {
    if (const auto meanwhile = std::exchange(before_rename, nullptr)) {
        meanwhile();
    }
    return __real_rename(from, to);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

class Folders : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(mkdir(runtime.c_str(), 0700), 0);
        setenv("HOME", root.c_str(), 1);
        setenv("XDG_CONFIG_HOME", (root / "config").c_str(), 1);
        setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
        setenv("TMPDIR", root.c_str(), 1);
    }

    void TearDown() override { unsetenv("TMPDIR"); }

    static mode_t mode_of(const fs::path &path) {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    static std::string text_of(const fs::path &file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    static std::vector<std::string> names_in(const fs::path &folder) {
        std::vector<std::string> names;
        for (const auto &entry : fs::directory_iterator(folder)) {
            names.push_back(entry.path().filename());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    void keep_lasting_settings() const {
        fs::create_directories(root / "config" / "zelvo");
        std::ofstream(root / "config" / "zelvo" / "Zelvo.vars") << "kept";
    }

    fs::path private_folder() const { return root / ("zelvo-" + std::to_string(geteuid())); }

    TemporaryFiles files;
    fs::path root = files.folder();
    fs::path runtime = root / "runtime";
};

} // namespace

TEST_F(Folders, LastingSettingsAreInTheConfigurationFolder) {
    EXPECT_EQ(host::lasting_settings_folder(), (root / "config" / "zelvo").string());
}

TEST_F(Folders, LastingSettingsAreBelowTheHomeByDefault) {
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(host::lasting_settings_folder(), (root / ".config" / "zelvo").string());
}

TEST_F(Folders, ARelativeConfigurationFolderIsIgnored) {
    setenv("XDG_CONFIG_HOME", "config", 1);
    EXPECT_EQ(host::lasting_settings_folder(), (root / ".config" / "zelvo").string());
}

TEST_F(Folders, LoginsFolderIsPrivate) {
    EXPECT_EQ(host::session_settings_folder(), (runtime / "zelvo").string());
    EXPECT_EQ(mode_of(runtime / "zelvo"), 0700U);
}

TEST_F(Folders, LoginsFolderStartsAsACopyOfTheLastingSettings) {
    fs::create_directories(root / "config" / "zelvo");
    std::ofstream(root / "config" / "zelvo" / "Zelvo.vars") << "kept";
    std::ofstream(root / "config" / "zelvo" / ".Zelvo.vars.unfinished") << "not kept";
    ASSERT_TRUE(host::session_settings_folder());
    EXPECT_TRUE(fs::exists(runtime / "zelvo" / "Zelvo.vars"));
    EXPECT_FALSE(fs::exists(runtime / "zelvo" / ".Zelvo.vars.unfinished"));
    EXPECT_EQ(std::distance(fs::directory_iterator(runtime), fs::directory_iterator()), 1);
}

TEST_F(Folders, LaterUseCopiesNothing) {
    ASSERT_TRUE(host::session_settings_folder());
    fs::create_directories(root / "config" / "zelvo");
    std::ofstream(root / "config" / "zelvo" / "Zelvo.vars") << "late";
    ASSERT_TRUE(host::session_settings_folder());
    EXPECT_FALSE(fs::exists(runtime / "zelvo" / "Zelvo.vars"));
}

TEST_F(Folders, WithoutARuntimeFolderAPrivateOneIsCreated) {
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(host::session_settings_folder(), private_folder().string());
    EXPECT_EQ(mode_of(private_folder()), 0700U);
}

TEST_F(Folders, RuntimeFolderThatOthersMayWriteToIsNotUsed) {
    ASSERT_EQ(chmod(runtime.c_str(), 0777), 0);
    EXPECT_EQ(host::session_settings_folder(), private_folder().string());
}

TEST_F(Folders, LinkIsRefused) {
    fs::create_directory_symlink(runtime, private_folder());
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_FALSE(host::session_settings_folder());
}

TEST_F(Folders, FileIsRefused) {
    std::ofstream(private_folder()) << "in the way";
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_FALSE(host::session_settings_folder());
}

TEST_F(Folders, FolderThatOthersMayWriteToIsRefused) {
    fs::create_directory(private_folder());
    ASSERT_EQ(chmod(private_folder().c_str(), 0777), 0);
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_FALSE(host::session_settings_folder());
}

TEST_F(Folders, AnotherUsersFolderIsRefused) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give a folder away";
    }
    fs::create_directory(private_folder());
    constexpr uid_t somebody_else = 65534;
    ASSERT_EQ(chown(private_folder().c_str(), somebody_else, somebody_else), 0);
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_FALSE(host::session_settings_folder());
}

TEST_F(Folders, LastingFolderIsCreatedOnlyForWriting) {
    const std::string path = (root / "config" / "zelvo" / "Zelvo.vars").string();
    EXPECT_EQ(host::path_of_name("ENVARC:Zelvo.vars", false), path);
    EXPECT_FALSE(fs::exists(root / "config"));
    EXPECT_EQ(host::path_of_name("ENVARC:Zelvo.vars", true), path);
    EXPECT_EQ(mode_of(root / "config" / "zelvo"), 0700U);
}

TEST_F(Folders, OtherNamesArePathsAlready) {
    EXPECT_EQ(host::path_of_name("objects/knot.lwo", false), "objects/knot.lwo");
    EXPECT_EQ(host::path_of_name("ENVIRONMENT.lwo", false), "ENVIRONMENT.lwo");
}

TEST_F(Folders, ReplacedBlanksAreRestored) {
    const std::string folder = root.string();
    EXPECT_EQ(host::path_of_name(folder + "/a%20b.chunky", false), folder + "/a b.chunky");
    EXPECT_EQ(host::path_of_name(folder + "/a%2520b.chunky", false), folder + "/a%20b.chunky");
    EXPECT_EQ(host::path_of_name("ENVARC:a%20b", false), (root / "config" / "zelvo" / "a b").string());
}

TEST_F(Folders, NameIsTakenLiterallyIfOnlyThatFileExists) {
    const std::string looking_like_it = (root / "a%20b.chunky").string();
    const std::string meant = (root / "a b.chunky").string();
    std::ofstream(looking_like_it) << "x";
    EXPECT_EQ(host::path_of_name(looking_like_it, false), looking_like_it);
    std::ofstream{meant} << "x";
    EXPECT_EQ(host::path_of_name(looking_like_it, false), meant);
}

TEST_F(Folders, InstalledFileIsOpenedOnlyIfTheCurrentFolderHasNone) {
    const fs::path before = fs::current_path();
    fs::current_path(root);
    const std::string name = "Zelvo_envmap.chunky";
    EXPECT_EQ(host::path_of_name(name, false), name);
    sdl::set_up({{}, {name}});
    EXPECT_EQ(host::path_of_name(name, false), host::installed_data_path(name));
    std::ofstream(root / name) << "here";
    EXPECT_EQ(host::path_of_name(name, false), name);
    sdl::set_up({});
    fs::current_path(before);
}

TEST_F(Folders, OnlyAFolderThatNoOtherUserMayWriteToIsUsed) {
    for (const auto &[mode, is_used] : {std::pair(0700, true),
                                        {0755, true},
                                        {0711, true},
                                        {0770, false},
                                        {0720, false},
                                        {0702, false},
                                        {0777, false}}) {
        ASSERT_EQ(chmod(runtime.c_str(), static_cast<mode_t>(mode)), 0);
        const fs::path expected = is_used ? runtime / "zelvo" : private_folder();
        EXPECT_EQ(host::session_settings_folder(), expected.string()) << std::oct << mode;
    }
    fs::create_directory(runtime / "zelvo");
    ASSERT_EQ(chmod(runtime.c_str(), 0700), 0);
    for (const auto &[mode, is_used] : {std::pair(0755, true), {0770, false}, {0702, false}}) {
        ASSERT_EQ(chmod((runtime / "zelvo").c_str(), static_cast<mode_t>(mode)), 0);
        EXPECT_EQ(host::session_settings_folder().has_value(), is_used) << std::oct << mode;
    }
}

TEST_F(Folders, RefusedFolderIsNamed) {
    fs::create_directory_symlink(runtime, private_folder());
    unsetenv("XDG_RUNTIME_DIR");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(host::session_settings_folder());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "zelvo: no settings: " + private_folder().string() + " is not a folder of yours alone\n");
}

TEST_F(Folders, SlowerStartUsesTheOthersFolderAndCleansUp) {
    keep_lasting_settings();
    before_rename = [this] {
        ASSERT_EQ(mkdir((runtime / "zelvo").c_str(), 0700), 0);
        std::ofstream(runtime / "zelvo" / "Zelvo.vars") << "the other start's";
    };
    EXPECT_EQ(host::session_settings_folder(), (runtime / "zelvo").string());
    EXPECT_EQ(text_of(runtime / "zelvo" / "Zelvo.vars"), "the other start's");
    EXPECT_EQ(names_in(runtime), std::vector<std::string>{"zelvo"});
}

TEST_F(Folders, SimultaneousStartsMakeOneFolder) {
    keep_lasting_settings();
    std::array<int, 2> gate{};
    ASSERT_EQ(pipe(gate.data()), 0);
    std::vector<pid_t> starts;
    for (int i = 0; i < 20; ++i) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            char byte = 0;
            close(gate[1]);
            // All of them see the end of the pipe at the same time.
            const bool is_open = read(gate[0], &byte, 1) == 0;
            const auto folder = host::session_settings_folder();
            _exit(is_open && folder && text_of(fs::path(*folder) / "Zelvo.vars") == "kept" ? 0 : 1);
        }
        starts.push_back(child);
    }
    close(gate[0]);
    close(gate[1]);
    for (const pid_t start : starts) {
        int status = 0;
        waitpid(start, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(names_in(runtime), std::vector<std::string>{"zelvo"});
}

TEST_F(Folders, LoginsFolderIsCompleteWhenItGetsItsName) {
    keep_lasting_settings();
    std::vector<std::string> names;
    before_rename = [&] {
        names = names_in(runtime);
        ASSERT_EQ(names.size(), 1U);
        EXPECT_EQ(text_of(runtime / names[0] / "Zelvo.vars"), "kept");
    };
    ASSERT_TRUE(host::session_settings_folder());
    ASSERT_EQ(names.size(), 1U);
    EXPECT_TRUE(names[0].starts_with("zelvo.")) << names[0];
    EXPECT_EQ(text_of(runtime / "zelvo" / "Zelvo.vars"), "kept");
}

TEST_F(Folders, OnlyFilesAndTargetsOfLinksAreCopied) {
    keep_lasting_settings();
    const fs::path lasting = root / "config" / "zelvo";
    fs::create_directory(lasting / "folder");
    std::ofstream(lasting / "folder" / "file") << "x";
    fs::create_symlink("Zelvo.vars", lasting / "link");
    fs::create_symlink("missing", lasting / "dangling");
    ASSERT_EQ(mkfifo((lasting / "pipe").c_str(), 0600), 0);
    ASSERT_TRUE(host::session_settings_folder());
    EXPECT_EQ(names_in(runtime / "zelvo"), (std::vector<std::string>{"Zelvo.vars", "link"}));
    EXPECT_FALSE(fs::is_symlink(runtime / "zelvo" / "link"));
    EXPECT_EQ(text_of(runtime / "zelvo" / "link"), "kept");
}

TEST_F(Folders, HomeThatIsNotInTheEnvironmentIsLookedUp) {
    unsetenv("XDG_CONFIG_HOME");
    for (const char *value : {static_cast<const char *>(nullptr), "", "relative"}) {
        value == nullptr ? unsetenv("HOME") : setenv("HOME", value, 1);
        const passwd *user = getpwuid(getuid());
        ASSERT_NE(user, nullptr);
        EXPECT_EQ(host::lasting_settings_folder(), std::string(user->pw_dir) + "/.config/zelvo");
    }
}

TEST_F(Folders, InvalidRuntimeFolderIsNotUsed) {
    std::ofstream(root / "file") << "x";
    fs::create_directory_symlink(runtime, root / "link");
    for (const std::string &value : {std::string("runtime"), (root / "missing").string(),
                                     (root / "file").string(), (root / "link").string(), std::string()}) {
        setenv("XDG_RUNTIME_DIR", value.c_str(), 1);
        EXPECT_EQ(host::session_settings_folder(), private_folder().string()) << value;
    }
}

TEST_F(Folders, ExistingLastingFolderStays) {
    keep_lasting_settings();
    const std::string folder = (root / "config" / "zelvo").string();
    ASSERT_EQ(chmod(folder.c_str(), 0755), 0);
    EXPECT_TRUE(host::make_lasting_settings_folder(folder));
    EXPECT_EQ(mode_of(folder), 0755U);
    fs::create_directory_symlink(folder, root / "link");
    EXPECT_TRUE(host::make_lasting_settings_folder((root / "link").string()));
}

TEST_F(Folders, ReasonWhyTheLastingFolderCannotBeCreatedIsReported) {
    std::ofstream(root / "file") << "x";
    EXPECT_FALSE(host::make_lasting_settings_folder((root / "file").string()));
    EXPECT_EQ(errno, EEXIST);
    EXPECT_FALSE(host::make_lasting_settings_folder((root / "file" / "zelvo").string()));
    EXPECT_EQ(errno, ENOTDIR);
    EXPECT_FALSE(host::make_lasting_settings_folder("/proc/self/zelvo"));
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(Folders, RunKeepsTheFolderThatItFoundFirst) {
    const pid_t child = fork();
    if (child == 0) {
        // The first folder found is kept for the whole process, so this needs a separate process.
        const auto first = host::path_of_name("ENV:Zelvo.vars", false);
        fs::create_directory(root / "other");
        setenv("XDG_RUNTIME_DIR", (root / "other").c_str(), 1);
        const auto second = host::path_of_name("ENV:Zelvo.vars", true);
        _exit(first == (runtime / "zelvo" / "Zelvo.vars").string() && second == first ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST_F(Folders, VolumeWithoutAFolderHasNoPathsAndAReason) {
    const pid_t child = fork();
    if (child == 0) {
        fs::create_directory(runtime / "zelvo");
        EXPECT_EQ(chmod((runtime / "zelvo").c_str(), 0777), 0);
        const bool is_none = !host::path_of_name("ENV:Zelvo.vars", true) && errno == EPERM;
        // The second call uses the remembered result.
        const bool is_none_again = !host::path_of_name("ENV:Zelvo.vars", true) && errno == EPERM;
        _exit(is_none && is_none_again ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    std::ofstream(root / "config") << "in the way";
    EXPECT_FALSE(host::path_of_name("ENVARC:Zelvo.vars", true));
    EXPECT_EQ(errno, ENOTDIR);
    EXPECT_TRUE(host::path_of_name("ENVARC:Zelvo.vars", false));
}

TEST_F(Folders, InstalledFileIsLookedForRelativeToTheProgram) {
    const fs::path program = fs::read_symlink("/proc/self/exe");
    const fs::path installed = host::installed_data_path("Zelvo_envmap.chunky");
    EXPECT_EQ(installed.filename(), "Zelvo_envmap.chunky");
    EXPECT_EQ(installed.parent_path(), program.parent_path().parent_path() / "share" / "zelvo");
}

TEST_F(Folders, InstalledFileIsWrittenInTheCurrentFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(root);
    sdl::set_up({{}, {"Zelvo_envmap.chunky"}});
    EXPECT_EQ(host::path_of_name("Zelvo_envmap.chunky", true), "Zelvo_envmap.chunky");
    EXPECT_EQ(host::path_of_name("another.chunky", false), "another.chunky");
    sdl::set_up({});
    fs::current_path(before);
}
