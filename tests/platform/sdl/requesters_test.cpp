// SPDX-License-Identifier: MIT
// Tests of the requesters' initial contents and answers, without the desktop's toolkit.
#include "platform/window/requesters.h"

#include "platform/asl.h"
#include "platform/sdl/failed_saves.h"
#include "platform/sdl/host_commands.h"
#include "platform/sdl/key_list.h"
#include "platform/shared/hooks.h"
#include "platform/window/chosen_screen.h"
#include "platform/window/windowed_host.h"
#include "support/temporary_files.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// Whether the toolkit of these tests has a display.
bool has_toolkit = false;

/// What the requesters were asked to show, and the user's answers.
host::FileQuestion file_question;
std::optional<std::string> file_answer;
std::vector<host::ModeName> modes_offered;
host::ModeQuestion mode_question{};
std::optional<host::ModeQuestion> mode_answer;
std::vector<std::string> notices;
int key_lists = 0;

} // namespace

namespace host {

bool can_show_requesters() {
    return has_toolkit;
}

void serve_toolkit() {}

std::optional<std::string> ask_for_file(const FileQuestion &question, const WhileOpen &) {
    file_question = question;
    return file_answer;
}

std::optional<ModeQuestion> ask_for_mode(const std::vector<ModeName> &modes, const ModeQuestion &initial,
                                         const WhileOpen &) {
    modes_offered = modes;
    mode_question = initial;
    return mode_answer;
}

void show_key_list(const WhileOpen &) {
    ++key_lists;
}

void show_notice(const std::string &, const std::string &text, const WhileOpen &) {
    notices.push_back(text);
}

} // namespace host

namespace {

class Requesters : public testing::Test {
protected:
    void SetUp() override {
        before = fs::current_path();
        fs::current_path(root);
        has_toolkit = true;
        host::state = {};
    }

    void TearDown() override {
        fs::current_path(before);
        has_toolkit = false;
        file_answer.reset();
        mode_answer.reset();
        host::state = {};
    }

    /// Shows a file requester; whether it was confirmed.
    bool ask_for_file(const char *initial_file) {
        const std::array<TagItem, 3> tags{{
            {ASLFR_TitleText, tag_pointer("title")},
            {ASLFR_InitialFile, tag_pointer(initial_file)},
            {TAG_DONE, 0},
        }};
        auto *requester = static_cast<FileRequester *>(AllocAslRequest(ASL_FileRequest, tags.data()));
        const bool is_confirmed = AslRequest(requester, nullptr) != FALSE;
        drawer = requester->fr_Drawer;
        file = requester->fr_File;
        FreeAslRequest(requester);
        return is_confirmed;
    }

    TemporaryFiles files;
    fs::path root = files.folder();
    fs::path before;
    std::string drawer;
    std::string file;
};

TEST_F(Requesters, AreRefusedWithoutAToolkit) {
    has_toolkit = false;
    EXPECT_EQ(AllocAslRequest(ASL_FileRequest, nullptr), nullptr);
}

TEST_F(Requesters, FilterForObjectsUnlessTheyBeginWithATexture) {
    ask_for_file("");
    ASSERT_EQ(file_question.filters.size(), 2U);
    EXPECT_EQ(file_question.filters[0].patterns,
              (std::vector<std::string>{"*.lwo", "*.LWO", "*.lwob", "*.LWOB"}));
    EXPECT_EQ(file_question.filters[1].patterns, std::vector<std::string>{"*"});
    ask_for_file("Zelvo_envmap.chunky");
    ASSERT_EQ(file_question.filters.size(), 2U);
    EXPECT_EQ(file_question.filters[0].patterns, (std::vector<std::string>{"*.chunky", "*.CHUNKY"}));
    EXPECT_EQ(file_question.title, "title");
}

TEST_F(Requesters, BeginWithTheFileIfThereIsOne) {
    ask_for_file("a.chunky");
    EXPECT_EQ(file_question.initial_path, "");
    std::ofstream(root / "a.chunky") << "x";
    ask_for_file("a.chunky");
    EXPECT_EQ(file_question.initial_path, (root / "a.chunky").string());
}

TEST_F(Requesters, GiveTheChosenFileWithoutBlanksAndItsDrawerWithASlash) {
    file_answer = "/my objects/a:/b c.lwo";
    EXPECT_TRUE(ask_for_file(""));
    EXPECT_EQ(drawer, "/my%20objects/a:/");
    EXPECT_EQ(file, "b%20c.lwo");
    file_answer = "/a.lwo";
    EXPECT_TRUE(ask_for_file(""));
    EXPECT_EQ(drawer, "/");
}

TEST_F(Requesters, KeepTheirContentsWhenCancelled) {
    EXPECT_FALSE(ask_for_file("a.chunky"));
    EXPECT_EQ(drawer, "");
    EXPECT_EQ(file, "a.chunky");
}

TEST_F(Requesters, KnowWhyAFileCannotBeOpened) {
    ask_for_file("");
    const auto error_of = [](const std::string &name) { return file_question.error_of_opening(name); };
    std::ofstream("file") << "x";
    EXPECT_EQ(error_of("file"), 0);
    EXPECT_EQ(error_of("missing"), ENOENT);
    EXPECT_EQ(error_of("."), EISDIR);
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_EQ(error_of("pipe"), ENOTSUP);
    EXPECT_EQ(error_of("/dev/null"), 0);
}

TEST_F(Requesters, BeginWithTheLastScreensModeAndHoldTheAnswer) {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    ASSERT_TRUE(host::hooks.show_screen({3, 640, 480, "title"}));
    host::hooks.hide_screen();
    auto *requester = static_cast<ScreenModeRequester *>(AllocAslRequest(ASL_ScreenModeRequest, nullptr));
    EXPECT_EQ(AslRequest(requester, nullptr), FALSE);
    ASSERT_EQ(modes_offered.size(), 5U);
    EXPECT_EQ(modes_offered[4].id, 4U);
    EXPECT_EQ(mode_question.mode_id, 3U);
    EXPECT_EQ(mode_question.width, 640);
    EXPECT_EQ(mode_question.height, 480);
    EXPECT_EQ(requester->sm_DisplayID, 3U);
    EXPECT_EQ(requester->sm_DisplayWidth, 640U);
    EXPECT_EQ(requester->sm_DisplayHeight, 480U);
    mode_answer = host::ModeQuestion{1, 320, 256};
    EXPECT_NE(AslRequest(requester, nullptr), FALSE);
    EXPECT_EQ(requester->sm_DisplayID, 1U);
    EXPECT_EQ(requester->sm_DisplayWidth, 320U);
    EXPECT_EQ(requester->sm_DisplayHeight, 256U);
    FreeAslRequest(requester);
}

TEST_F(Requesters, AnswerOnceByThemselvesWhatWasChosenBefore) {
    host::chosen_screen = {1, 200, 100};
    auto *requester = static_cast<ScreenModeRequester *>(AllocAslRequest(ASL_ScreenModeRequest, nullptr));
    modes_offered.clear();
    EXPECT_NE(AslRequest(requester, nullptr), FALSE);
    EXPECT_TRUE(modes_offered.empty());
    EXPECT_EQ(requester->sm_DisplayID, 1U);
    EXPECT_EQ(requester->sm_DisplayWidth, 200U);
    EXPECT_EQ(requester->sm_DisplayHeight, 100U);
    AslRequest(requester, nullptr);
    EXPECT_FALSE(modes_offered.empty());
    FreeAslRequest(requester);
}

TEST_F(Requesters, OpenAnotherObjectOnlyIfItIsOne) {
    notices.clear();
    host::open_object(root / "missing.lwo");
    std::ofstream("note.lwo") << "no object";
    host::open_object("note.lwo");
    EXPECT_EQ(host::next_object, "");
    EXPECT_EQ(host::quit_requested, 0);
    ASSERT_EQ(notices.size(), 2U);
    EXPECT_EQ(notices[0], (root / "missing.lwo").string() + ": No such file or directory");
    EXPECT_EQ(notices[1], "note.lwo is no LightWave object (IFF form LWOB).");
    std::ofstream("knot.lwo") << "FORM    LWOB";
    file_answer = "knot.lwo";
    host::carry_out(host::HostCommand::open_object);
    EXPECT_EQ(file_question.filters.size(), 2U);
    EXPECT_EQ(host::next_object, (root / "knot.lwo").string());
    EXPECT_EQ(host::quit_requested, 1);
    host::next_object.clear();
    host::quit_requested = 0;
}

TEST_F(Requesters, ShowTheListOfKeys) {
    has_toolkit = false;
    host::carry_out(host::HostCommand::show_keys);
    EXPECT_EQ(key_lists, 0);
    has_toolkit = true;
    host::carry_out(host::HostCommand::show_keys);
    EXPECT_EQ(key_lists, 1);
}

TEST_F(Requesters, ReportOnlyTheFirstFailedSave) {
    notices.clear();
    testing::internal::CaptureStderr();
    host::tell_of_failed_save("ENV:Zelvo.vars", "/full/Zelvo.vars", ENOSPC);
    host::tell_of_failed_save("ENVARC:Zelvo.vars", "/full/Zelvo.vars", ENOSPC);
    const std::string errors = testing::internal::GetCapturedStderr();
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_NE(errors.find("zelvo: ENV:Zelvo.vars was not saved: "), std::string::npos) << errors;
    EXPECT_NE(errors.find("zelvo: ENVARC:Zelvo.vars was not saved: "), std::string::npos) << errors;
    EXPECT_EQ(errors.find("zelvo: " + notices[0]), 0U);
}

} // namespace
