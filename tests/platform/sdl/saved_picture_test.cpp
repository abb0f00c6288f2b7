// SPDX-License-Identifier: MIT
// The names of saved pictures.
#include "platform/sdl/saved_picture_name.h"

#include "support/temporary_files.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

class SavedPicture : public testing::Test {
protected:
    void SetUp() override {
        setenv("TZ", "UTC-2", 1);
        tzset();
    }

    void TearDown() override {
        unsetenv("TZ");
        tzset();
    }

    /// 28 February 2026, 15:05:09 in Greenwich.
    static constexpr std::time_t moment = 1772291109;
    TemporaryFiles files;
};

TEST_F(SavedPicture, IsNamedAfterTheObjectAndTheLocalTime) {
    EXPECT_EQ(host::saved_picture_path(files.folder(), "/objects/my knot.1.lwo", moment),
              files.path("my knot.1_2026-02-28_17-05-09.png"));
}

TEST_F(SavedPicture, TakesNoNameThatIsThere) {
    for (const char *name :
         {"a_2026-02-28_17-05-09.png", "a_2026-02-28_17-05-09-2.png", "a_2026-02-28_17-05-09-3.png"}) {
        EXPECT_EQ(host::saved_picture_path(files.folder(), "a.lwo", moment), files.path(name));
        files.write(name, "");
    }
}

TEST_F(SavedPicture, MayBeInAFolderThatIsMadeLater) {
    EXPECT_EQ(host::saved_picture_path(files.path("b"), "a", moment),
              files.path("b/a_2026-02-28_17-05-09.png"));
}

} // namespace
