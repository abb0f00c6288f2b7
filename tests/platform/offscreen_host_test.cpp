// SPDX-License-Identifier: MIT
// Tests of the offscreen host's set-up, libraries, files, requesters and clock.
#include "platform/offscreen/host.h"

#include "platform/asl.h"
#include "platform/dos.h"
#include "platform/lowlevel.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <thread>

namespace {

using Lines = std::vector<std::string>;

class OffscreenHost : public testing::Test {
protected:
    OffscreenHost() { setup.records_calls = true; }
    ~OffscreenHost() override { offscreen::set_up({}); }

    void start() { offscreen::set_up(setup); }

    /// Opens a file by the program's name for it; whether that succeeded.
    static bool can_open(const char *name, const char *mode = "rb") {
        std::FILE *file = open_file(name, mode);
        if (file == nullptr) {
            return false;
        }
        std::fclose(file);
        return true;
    }

    static FileRequester *file_requester(const char *initial_file = nullptr) {
        const std::array<TagItem, 2> tags{
            {{initial_file != nullptr ? ASLFR_InitialFile : TAG_DONE, tag_pointer(initial_file)},
             {TAG_DONE, 0}}};
        return static_cast<FileRequester *>(AllocAslRequest(ASL_FileRequest, tags.data()));
    }

    static ScreenModeRequester *mode_requester() {
        const TagItem end{TAG_DONE, 0};
        return static_cast<ScreenModeRequester *>(AllocAslRequest(ASL_ScreenModeRequest, &end));
    }

    offscreen::Setup setup;
};

using OffscreenLibraries = OffscreenHost;
using OffscreenRefusal = OffscreenHost;
using OffscreenCommandLine = OffscreenHost;
using OffscreenFiles = OffscreenHost;
using OffscreenRequesters = OffscreenHost;
using OffscreenClock = OffscreenHost;

} // namespace

TEST_F(OffscreenHost, RecordsCallsInOrderWithTheirArguments) {
    start();
    Library *library = OpenLibrary("asl.library", 38);
    GetInterface(library, "main", 1, nullptr);
    CloseLibrary(library);
    EXPECT_EQ(offscreen::calls(), (Lines{"OpenLibrary(asl.library, 38)", "GetInterface(asl.library, main, 1)",
                                         "CloseLibrary(asl.library)"}));
}

TEST_F(OffscreenHost, RecordsNothingUnlessAsked) {
    setup.records_calls = false;
    start();
    CloseLibrary(OpenLibrary("asl.library", 38));
    EXPECT_EQ(offscreen::calls(), Lines{});
}

TEST_F(OffscreenHost, SetUpResetsTheHost) {
    start();
    OpenLibrary("asl.library", 38);
    offscreen::request_quit();
    start();
    EXPECT_EQ(offscreen::calls(), Lines{});
    EXPECT_EQ(offscreen::held(), Lines{});
    EXPECT_EQ(offscreen::refusable_points(), 0);
    EXPECT_EQ(offscreen::current_pass(), 0);
}

TEST_F(OffscreenLibraries, AreListedUntilTheyAreClosed) {
    start();
    Library *graphics = OpenLibrary("graphics.library", 39);
    Library *asl = OpenLibrary("asl.library", 38);
    EXPECT_EQ(offscreen::held(), (Lines{"library graphics.library", "library asl.library"}));
    CloseLibrary(graphics);
    EXPECT_EQ(offscreen::held(), Lines{"library asl.library"});
    CloseLibrary(nullptr);
    CloseLibrary(asl);
    EXPECT_EQ(offscreen::held(), Lines{});
}

TEST_F(OffscreenRefusal, ByNameRefusesEveryCall) {
    setup.refused = {"OpenLibrary"};
    start();
    EXPECT_EQ(OpenLibrary("asl.library", 38), nullptr);
    EXPECT_EQ(OpenLibrary("asl.library", 38), nullptr);
    EXPECT_EQ(offscreen::held(), Lines{});
}

TEST_F(OffscreenRefusal, ByNumberRefusesOneCall) {
    setup.refused = {"OpenLibrary#2"};
    start();
    EXPECT_NE(OpenLibrary("a", 1), nullptr);
    EXPECT_EQ(OpenLibrary("b", 1), nullptr);
    EXPECT_NE(OpenLibrary("c", 1), nullptr);
}

TEST_F(OffscreenRefusal, ByFirstArgumentRefusesCallsWithThatArgument) {
    setup.refused = {"OpenLibrary:asl.library", "open_file:ENV:Zelvo.vars"};
    start();
    EXPECT_EQ(OpenLibrary("asl.library", 38), nullptr);
    EXPECT_NE(OpenLibrary("graphics.library", 39), nullptr);
    EXPECT_FALSE(can_open("ENV:Zelvo.vars"));
    EXPECT_TRUE(can_open("/dev/null"));
}

TEST_F(OffscreenRefusal, ByPlaceCountsOverAllCallsThatCanFail) {
    setup.command_line = {"object"};
    setup.refused_point = 3;
    start();
    Library *library = OpenLibrary("a", 1);
    EXPECT_NE(GetInterface(library, "main", 1, nullptr), nullptr);
    ArgumentSlot slot = 0;
    EXPECT_EQ(ReadArgs("FILE/A", &slot, nullptr), nullptr);
    EXPECT_NE(OpenLibrary("b", 1), nullptr);
    CloseLibrary(library);
    EXPECT_EQ(offscreen::refusable_points(), 4) << "closing cannot fail";
}

TEST_F(OffscreenCommandLine, GivesTheFileUntilItIsFreed) {
    setup.command_line = {"FILE=object.lwo"};
    start();
    ArgumentSlot slot = 0;
    RDArgs *arguments = ReadArgs("FILE/A", &slot, nullptr);
    ASSERT_NE(arguments, nullptr);
    EXPECT_STREQ(reinterpret_cast<const char *>(slot), "object.lwo");
    EXPECT_EQ(offscreen::held(), Lines{"arguments"});
    FreeArgs(arguments);
    FreeArgs(nullptr);
    EXPECT_EQ(offscreen::held(), Lines{});
}

TEST_F(OffscreenCommandLine, WithoutExactlyOneFileDoesNotParse) {
    for (const Lines &words : {Lines{}, Lines{"one", "two"}}) {
        setup.command_line = words;
        start();
        ArgumentSlot slot = 0;
        EXPECT_EQ(ReadArgs("FILE/A", &slot, nullptr), nullptr);
        EXPECT_EQ(slot, 0);
        EXPECT_EQ(offscreen::held(), Lines{});
    }
}

TEST_F(OffscreenFiles, AddPartJoinsInPlaceWithinItsLimit) {
    start();
    std::array<char, 10> drawer{"Work:obj"};
    EXPECT_EQ(AddPart(drawer.data(), "cow", 10), FALSE);
    EXPECT_STREQ(drawer.data(), "Work:obj");
    drawer = {"Work:"};
    EXPECT_EQ(AddPart(drawer.data(), "cow", 10), TRUE);
    EXPECT_STREQ(drawer.data(), "Work:cow");
}

TEST_F(OffscreenFiles, VolumesAreFolders) {
    const TemporaryFiles files;
    files.write("Zelvo.vars", "text");
    setup.volumes = {{"ENV", files.folder()}};
    start();
    EXPECT_TRUE(can_open("ENV:Zelvo.vars"));
    EXPECT_FALSE(can_open("ENV:"));
    EXPECT_TRUE(can_open("ENV:new", "w"));
    EXPECT_TRUE(std::filesystem::exists(files.path("new")));
}

TEST_F(OffscreenFiles, NameMayHaveItsBlanksReplacedAsOnTheDesktop) {
    const TemporaryFiles files;
    files.write("my texture", "text");
    start();
    EXPECT_TRUE(can_open(files.path("my texture").c_str()));
    EXPECT_TRUE(can_open(files.path("my%20texture").c_str()));
    EXPECT_FALSE(can_open(files.path("my%09texture").c_str()));
    EXPECT_TRUE(can_open(files.path("my%20new").c_str(), "w"));
    EXPECT_TRUE(std::filesystem::exists(files.path("my%20new")));
}

TEST_F(OffscreenFiles, ReplacementsAreFoundByTheExactName) {
    const TemporaryFiles files;
    setup.stand_ins = {{"some name", files.write("file", "")}};
    start();
    EXPECT_TRUE(can_open("some name"));
    EXPECT_FALSE(can_open("Some name"));
    EXPECT_EQ(offscreen::calls(), (Lines{"open_file(some name, rb)", "open_file(Some name, rb)"}));
}

TEST_F(OffscreenRequesters, FileRequesterHoldsItsAnswer) {
    setup.answers = {{offscreen::FileAnswer{"Work:", "cow"}, {}}};
    start();
    FileRequester *requester = file_requester("initial");
    EXPECT_STREQ(requester->fr_File, "initial");
    EXPECT_STREQ(requester->fr_Drawer, "");
    EXPECT_EQ(AslRequest(requester, nullptr), TRUE);
    EXPECT_STREQ(requester->fr_File, "cow");
    EXPECT_STREQ(requester->fr_Drawer, "Work:");
    EXPECT_EQ(offscreen::held(), Lines{"file requester"});
    FreeAslRequest(requester);
    EXPECT_EQ(offscreen::held(), Lines{});
}

TEST_F(OffscreenRequesters, CancelledFileRequesterKeepsItsContents) {
    setup.answers = {{}};
    start();
    FileRequester *requester = file_requester("initial");
    EXPECT_EQ(AslRequest(requester, nullptr), FALSE);
    EXPECT_STREQ(requester->fr_File, "initial");
    EXPECT_STREQ(requester->fr_Drawer, "");
    FreeAslRequest(requester);
}

TEST_F(OffscreenRequesters, WithoutAnswersFileRequestersAreCancelledAndModeRequestersConfirmed) {
    setup.default_mode = {7, 640, 480};
    start();
    FileRequester *file = file_requester();
    EXPECT_EQ(AslRequest(file, nullptr), FALSE);
    EXPECT_STREQ(file->fr_File, "");
    ScreenModeRequester *mode = mode_requester();
    EXPECT_EQ(AslRequest(mode, nullptr), TRUE);
    EXPECT_EQ(mode->sm_DisplayID, 7U);
    EXPECT_EQ(mode->sm_DisplayWidth, 640U);
    EXPECT_EQ(mode->sm_DisplayHeight, 480U);
    FreeAslRequest(file);
    FreeAslRequest(mode);
    EXPECT_EQ(offscreen::held(), Lines{});
}

TEST_F(OffscreenRequesters, ModeRequesterHoldsItsAnswerUnlessCancelled) {
    setup.answers = {{{}, offscreen::ModeAnswer{9, 100, 75}}, {}};
    start();
    ScreenModeRequester *first = mode_requester();
    EXPECT_EQ(AslRequest(first, nullptr), TRUE);
    EXPECT_EQ(first->sm_DisplayID, 9U);
    EXPECT_EQ(first->sm_DisplayWidth, 100U);
    EXPECT_EQ(first->sm_DisplayHeight, 75U);
    ScreenModeRequester *second = mode_requester();
    EXPECT_EQ(AslRequest(second, nullptr), FALSE);
    EXPECT_EQ(second->sm_DisplayWidth, 320U);
    EXPECT_EQ(second->sm_DisplayHeight, 256U);
    FreeAslRequest(first);
    FreeAslRequest(second);
}

TEST_F(OffscreenRequesters, AnswerForAnotherKindStaysForTheNextOne) {
    setup.answers = {{offscreen::FileAnswer{"", "cow"}, {}}};
    start();
    ScreenModeRequester *mode = mode_requester();
    EXPECT_EQ(AslRequest(mode, nullptr), TRUE);
    FileRequester *file = file_requester();
    EXPECT_EQ(AslRequest(file, nullptr), TRUE);
    EXPECT_STREQ(file->fr_File, "cow");
    FreeAslRequest(mode);
    FreeAslRequest(file);
}

TEST_F(OffscreenHost, VolumeWithoutAFolderHasNoFiles) {
    const TemporaryFiles files;
    setup.volumes = {{"ENV", files.folder()}};
    start();
    EXPECT_TRUE(can_open("ENV:Zelvo.vars", "w"));
    EXPECT_FALSE(can_open("ENVARC:Zelvo.vars", "w"));
    EXPECT_FALSE(can_open("envarc:Zelvo.vars", "r"));
}

TEST_F(OffscreenHost, WithoutALastPassSendsNoEscape) {
    setup.last_pass = 0;
    start();
    EXPECT_EQ(GetMsg(nullptr), nullptr);
}

TEST_F(OffscreenClock, AdvancesByTheSameAmountWithEachReading) {
    start();
    EClockVal context{};
    EXPECT_EQ(ElapsedTime(&context), 256U);
    EXPECT_EQ(ElapsedTime(&context), 256U);
    setup.tick = 65536;
    start();
    EXPECT_EQ(ElapsedTime(&context), 65536U);
}

TEST_F(OffscreenClock, MayBeTheRealOne) {
    setup.tick = std::nullopt;
    start();
    const auto ticks_between = [](auto from, auto to) {
        return std::chrono::duration<double>(to - from).count() * 65536.0;
    };
    using std::chrono::steady_clock;
    EClockVal context{};
    const auto before_first = steady_clock::now();
    ElapsedTime(&context);
    const auto after_first = steady_clock::now();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const auto before_second = steady_clock::now();
    const double elapsed = ElapsedTime(&context);
    const auto after_second = steady_clock::now();
    EXPECT_GT(elapsed, ticks_between(after_first, before_second) - 1.0);
    EXPECT_LT(elapsed, ticks_between(before_first, after_second) + 1.0);
}
