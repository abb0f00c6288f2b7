// SPDX-License-Identifier: MIT
// Tests of finding, requesting and reading the texture.
#include "settings/environment_map.h"

#include "main_68k/viewer_state.h"
#include "platform/offscreen/host.h"
#include "raster/texture_map.h"
#include "support/model_builder.h"
#include "support/open_descriptors.h"
#include "support/program_run.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

const std::string default_name = "Zelvo_envmap.chunky";

/// A texture's bytes, each different from the one before.
std::string texture(std::size_t bytes, int seed) {
    std::string data;
    for (std::size_t i = 0; i < bytes; ++i) {
        data += static_cast<char>(static_cast<std::size_t>(seed) + i * 7 + i / 256);
    }
    return data;
}

class EnvironmentMap : public testing::Test {
protected:
    void SetUp() override {
        reset_program_state();
        allocate_envmap();
        std::fill_n(envmap.get(), envmap_bytes, std::uint8_t{0xEE});
        setup.records_calls = true;
    }

    /// Later tests fork this process to run the program, which begins with this state.
    void TearDown() override { reset_program_state(); }

    void load() {
        offscreen::set_up(setup);
        load_envmap();
    }

    /// Chooses a texture and returns what was printed.
    std::string choose() {
        offscreen::set_up(setup);
        testing::internal::CaptureStdout();
        choose_envmap();
        std::fflush(stdout);
        return testing::internal::GetCapturedStdout();
    }

    void answer(const std::string &drawer, const std::string &name) {
        setup.answers.push_back({offscreen::FileAnswer{drawer, name}, {}});
    }

    static std::string texture_in_memory() { return {envmap.get(), envmap.get() + envmap_bytes}; }

    static void name_texture(const std::string &name) {
        std::snprintf(viewer.envmap_filename.data(), viewer.envmap_filename.size(), "%s", name.c_str());
    }

    TemporaryFiles files;
    offscreen::Setup setup;
};

} // namespace

TEST_F(EnvironmentMap, StartsAtZero) {
    allocate_envmap();
    EXPECT_EQ(texture_in_memory(), std::string(65536, '\0'));
}

TEST_F(EnvironmentMap, LoadsTheNamedFileWithoutAsking) {
    const std::string bytes = texture(65536, 1);
    name_texture(files.write("map", bytes));
    load();
    EXPECT_EQ(texture_in_memory(), bytes);
    EXPECT_EQ(offscreen::calls(), (std::vector<std::string>{"open_file(" + files.path("map") + ", rb)"}));
}

TEST_F(EnvironmentMap, ShortFileChangesTheStartOfTheTextureOnly) {
    const std::string bytes = texture(100, 2);
    name_texture(files.write("map", bytes));
    load();
    EXPECT_EQ(texture_in_memory(), bytes + std::string(65436, '\xEE'));
}

TEST_F(EnvironmentMap, FileIsClosedAfterLoadingAndAfterChoosing) {
    setup.stand_ins[default_name] = files.write("texture", texture(envmap_bytes, 1));
    const int before = open_descriptors();
    load();
    EXPECT_EQ(open_descriptors(), before);
    choose();
    EXPECT_EQ(open_descriptors(), before);
}

TEST_F(EnvironmentMap, EmptyFileChangesNothing) {
    name_texture(files.write("map", ""));
    load();
    EXPECT_EQ(texture_in_memory(), std::string(65536, '\xEE'));
}

TEST_F(EnvironmentMap, LongFileIsReadToTheTexturesEnd) {
    const std::string bytes = texture(70000, 3);
    name_texture(files.write("map", bytes));
    load();
    EXPECT_EQ(texture_in_memory(), bytes.substr(0, 65536));
}

TEST_F(EnvironmentMap, FileThatCannotBeOpenedIsRequested) {
    const std::string bytes = texture(65536, 4);
    files.write("map", bytes);
    name_texture(files.path("missing"));
    answer(files.folder(), "map");
    testing::internal::CaptureStdout();
    load();
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "envmap filename: " + files.path("map") + "\n");
    EXPECT_EQ(texture_in_memory(), bytes);
    EXPECT_EQ(viewer.envmap_filename.data(), files.path("map"));
}

TEST_F(EnvironmentMap, RequesterIsAskedWithItsTitleAndTheDefaultName) {
    name_texture("something else");
    setup.stand_ins[default_name] = files.write("map", texture(10, 5));
    choose();
    EXPECT_EQ(
        offscreen::calls(),
        (std::vector<std::string>{"AllocAslRequest(0, ASLFR_DoPatterns=1, ASLFR_TitleText=\"Select "
                                  "Zelvo_envmap.chunky file\", ASLFR_InitialFile=\"Zelvo_envmap.chunky\")",
                                  "AslRequest()", "FreeAslRequest()", "open_file(Zelvo_envmap.chunky, rb)"}));
    EXPECT_EQ(offscreen::held(), std::vector<std::string>{});
}

TEST_F(EnvironmentMap, DrawerAndNameAreJoinedByASlashIfNeeded) {
    struct Case {
        std::string drawer;
        std::string path;
    };
    const std::string bytes = texture(65536, 6);
    for (const auto &[drawer, path] : {Case{"Work:textures", "Work:textures/gold"},
                                       {"Work:", "Work:gold"},
                                       {"Work:textures/", "Work:textures/gold"},
                                       {"", "gold"},
                                       {"plain", "plain/gold"},
                                       {"/", "/gold"}}) {
        setup.answers.clear();
        answer(drawer, "gold");
        setup.stand_ins = {{path, files.write("map", bytes)}};
        std::fill_n(envmap.get(), envmap_bytes, std::uint8_t{0xEE});
        EXPECT_EQ(choose(), "envmap filename: " + path + "\n");
        EXPECT_EQ(viewer.envmap_filename.data(), path);
        EXPECT_EQ(texture_in_memory(), bytes) << path;
    }
}

TEST_F(EnvironmentMap, CancelledRequesterCountsAsConfirmed) {
    const std::string bytes = texture(65536, 7);
    name_texture("Work:earlier");
    setup.answers.push_back({});
    setup.stand_ins = {{default_name, files.write("map", bytes)}};
    EXPECT_EQ(choose(), "envmap filename: Zelvo_envmap.chunky\n");
    EXPECT_EQ(viewer.envmap_filename.data(), default_name);
    EXPECT_EQ(texture_in_memory(), bytes);
}

TEST_F(EnvironmentMap, WithoutARequesterTheStoredNameIsUsed) {
    const std::string bytes = texture(65536, 8);
    name_texture(files.write("map", bytes));
    setup.refused = {"AllocAslRequest"};
    EXPECT_EQ(choose(), "");
    EXPECT_EQ(texture_in_memory(), bytes);
    EXPECT_EQ(viewer.envmap_filename.data(), files.path("map"));
}

TEST_F(EnvironmentMap, OverlongNameIsCut) {
    const std::string drawer(2000, 'd');
    answer(drawer, "gold");
    setup.stand_ins = {{drawer.substr(0, 1023), files.write("map", texture(65536, 9))}};
    EXPECT_EQ(choose(), "envmap filename: " + drawer.substr(0, 1023) + "\n");
    EXPECT_EQ(std::strlen(viewer.envmap_filename.data()), 1023U);
}

namespace {

/// Runs the program without a file of the default name. There are settings, so no display is open while the
/// texture is read.
ProgramRun run_without_texture(const TemporaryFiles &files, offscreen::Setup setup) {
    files.write("Zelvo.vars", "");
    setup.volumes = {{"ENV", files.folder()}};
    setup.stand_ins[default_name] = files.path("missing");
    return run_program(setup);
}

} // namespace

TEST(EnvironmentMapFailure, FolderIsNoTexture) {
    const TemporaryFiles files;
    offscreen::Setup setup = viewer_setup("cube");
    setup.answers.push_back({offscreen::FileAnswer{files.folder(), ""}, {}});
    const ProgramRun run = run_without_texture(files, setup);
    EXPECT_EQ(run.output, "envmap filename: " + files.folder() + "/\nenvmap file open error\n");
    EXPECT_EQ(run.exit_code, 20);
}
