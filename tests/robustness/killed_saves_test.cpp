// SPDX-License-Identifier: MIT
// Tests that a process that is killed while it saves settings leaves a complete old or new file.
#include "main_68k/viewer_state.h"
#include "platform/offscreen/host.h"
#include "settings/settings_file.h"
#include "support/model_builder.h"
#include "support/temporary_files.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kills = 200;

/// Settings that are all made from one number, so that a mixture of two versions would be noticed.
void set_version(int version) {
    viewer.gammas = {version / 8.0, version / 8.0, version / 8.0};
    viewer.rotate = version / 8.0;
    viewer.obj_style = version;
    viewer.dot_lum = version;
    viewer.height = version;
    // Versions have different lengths, so that the remains of a longer one would be noticed as well.
    const std::string name(static_cast<std::size_t>(1 + version % 900), 'n');
    std::snprintf(viewer.envmap_filename.data(), viewer.envmap_filename.size(), "%s", name.c_str());
}

offscreen::Setup setup_in(const TemporaryFiles &files) {
    offscreen::Setup setup;
    setup.volumes = {{"ENV", files.folder()}, {"ENVARC", files.path("archive")}};
    return setup;
}

/// Saves one version after another into both places until it is killed. Reports each finished save.
[[noreturn]] void save_for_ever(const TemporaryFiles &files, int first, int saved) {
    offscreen::set_up(setup_in(files));
    for (int version = first;; ++version) {
        set_version(version);
        save_vars(session_settings);
        save_vars(permanent_settings);
        (void)!write(saved, "x", 1);
    }
}

/// The version in a file; -1 if the file is not complete.
int version_in(const std::string &bytes, const char *path) {
    reset_program_state();
    if (load_vars(path) != 1) {
        return -1;
    }
    const ViewerState loaded = viewer;
    set_version(loaded.height);
    const bool is_one_version = loaded.gammas.red == viewer.gammas.red &&
                                loaded.gammas.green == viewer.gammas.green &&
                                loaded.gammas.blue == viewer.gammas.blue && loaded.rotate == viewer.rotate &&
                                loaded.obj_style == viewer.obj_style && loaded.dot_lum == viewer.dot_lum &&
                                std::string(loaded.envmap_filename.data()) == viewer.envmap_filename.data();
    const bool is_whole = std::count(bytes.begin(), bytes.end(), '\n') == 13 &&
                          bytes.ends_with("\n*** Please don't edit this file! ***");
    return is_one_version && is_whole ? loaded.height : -1;
}

/// How long saving into both places takes, in microseconds. Each save waits for the disk.
long measure_saving(const TemporaryFiles &files) {
    using namespace std::chrono;
    offscreen::set_up(setup_in(files));
    const auto start = steady_clock::now();
    set_version(0);
    save_vars(session_settings);
    save_vars(permanent_settings);
    return duration_cast<microseconds>(steady_clock::now() - start).count();
}

TEST(KilledSaves, LeaveWholeFiles) {
    const TemporaryFiles files;
    std::filesystem::create_directory(files.path("archive"));
    const long saving = measure_saving(files);
    std::minstd_rand random(20260);
    for (int kill_number = 0; kill_number < kills; ++kill_number) {
        const int first = 10 * kill_number;
        int saved[2];
        ASSERT_EQ(pipe(saved), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            save_for_ever(files, first, saved[1]);
        }
        // The kill comes some time after one, two or three versions were saved.
        const int whole = 1 + kill_number % 3;
        for (int version = 0; version < whole; ++version) {
            char byte = 0;
            ASSERT_EQ(read(saved[0], &byte, 1), 1);
        }
        usleep(static_cast<useconds_t>(random() / 7 % static_cast<unsigned long>(saving + 1)));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        close(saved[0]);
        close(saved[1]);
        ASSERT_TRUE(WIFSIGNALED(status));

        for (const auto &[path, name] : {std::pair(session_settings, "Zelvo.vars"),
                                         std::pair(permanent_settings, "archive/Zelvo.vars")}) {
            offscreen::set_up(setup_in(files));
            const int version = version_in(files.read(name), path);
            ASSERT_GE(version, 0) << name << " is torn after kill " << kill_number;
            ASSERT_GE(version, first + whole - 1)
                << name << " is an older one than was saved before the kill";
        }
    }
    reset_program_state();
    std::printf("%d kills survived, a save takes %ld us\n", kills, saving / 2);
}

} // namespace
