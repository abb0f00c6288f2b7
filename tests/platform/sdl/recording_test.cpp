// SPDX-License-Identifier: MIT
// The file that a run is recorded into.
#include "platform/window/recording.h"

#include "platform/shared/frame_sum.h"
#include "platform/shared/held_messages.h"
#include "support/temporary_files.h"

#include <array>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <gtest/gtest.h>

namespace {

constexpr std::array<std::uint8_t, 6> pixels{1, 2, 3, 4, 5, 6};

class Recording : public testing::Test {
protected:
    void TearDown() override { host::end_recording(); }

    /// The recording's text up to and without what the run begins with.
    static std::string counts(int passes, int frames) {
        host::FrameSum sum;
        for (int i = 0; i < frames; ++i) {
            sum.add(pixels, 3, 2);
        }
        std::array<char, 100> text{};
        std::snprintf(text.data(), text.size(), "passes %-10d\nframes %-10d 0x%016" PRIx64 "\n", passes,
                      frames, sum.value());
        return std::string("# A run of Zelvo. zelvo-render --input repeats it.\n") + text.data();
    }

    TemporaryFiles files;
    std::string path = files.path("run.txt");
};

TEST_F(Recording, IsWholeAfterEveryStep) {
    ASSERT_TRUE(host::begin_recording(path, {"a.lwo", {{"ENV", "b\n"}, {"ENVARC", ""}}}));
    const std::string start = "object a.lwo\nenv b\nenv \nenvarc \n";
    EXPECT_EQ(files.read("run.txt"), counts(1, 0) + start);
    host::record_file("a.lwo", "/my objects/a.lwo");
    host::record_file("a.lwo", "/other/a.lwo");
    host::record_file("c", "");
    host::record_frame(pixels, 3, 2);
    host::record_event(host::event_message(IDCMP_VANILLAKEY, 'm'));
    host::record_mode_answer({2, 320, 256});
    host::record_frame(pixels, 3, 2);
    const std::string lines = "file a.lwo /my%20objects/a.lwo\nfile c \"\"\n1 key m\nanswer mode 2 320 256\n";
    EXPECT_EQ(files.read("run.txt"), counts(3, 2) + start + lines);
    host::Requester requester(ASL_FileRequest);
    requester.hold("", "d");
    host::record_file_answer(requester, false);
    host::record_file_answer(requester, true);
    host::end_recording();
    EXPECT_EQ(files.read("run.txt"), counts(2, 2) + start + lines + "answer cancel\nanswer file \"\" d\n");
}

TEST_F(Recording, OfARunWithoutAPassHasOneToRepeat) {
    ASSERT_TRUE(host::begin_recording(path, {}));
    host::end_recording();
    EXPECT_EQ(files.read("run.txt"), counts(1, 0));
}

TEST_F(Recording, ThatCannotBeMadeIsNone) {
    EXPECT_FALSE(host::begin_recording(files.path("missing/run.txt"), {}));
    EXPECT_EQ(errno, ENOENT);
    host::record_frame(pixels, 3, 2);
    host::record_event({});
    host::end_recording();
}

TEST_F(Recording, ThatCannotBeWrittenIsReported) {
    testing::internal::CaptureStderr();
    ASSERT_TRUE(host::begin_recording("/dev/full", {}));
    host::end_recording();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "zelvo: the recording is incomplete: /dev/full\n");
}

TEST_F(Recording, IsFollowedByOneOfTheNextNumber) {
    EXPECT_EQ(host::next_recording("run.txt"), "run-2.txt");
    EXPECT_EQ(host::next_recording("/a/run-2.txt"), "/a/run-3.txt");
    EXPECT_EQ(host::next_recording("run-9"), "run-10");
    EXPECT_EQ(host::next_recording("my-run.x.txt"), "my-run.x-2.txt");
    EXPECT_EQ(host::next_recording("run-"), "run--2");
    EXPECT_EQ(host::next_recording("run-99999999999"), "run-99999999999-2");
}

} // namespace
