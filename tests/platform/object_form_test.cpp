// SPDX-License-Identifier: MIT
// Which files are taken for objects.
#include "platform/posix/object_form.h"

#include "support/temporary_files.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

namespace {

using host::is_object_file;

TEST(ObjectForm, IsThatOfFilesThatBeginWithIt) {
    const TemporaryFiles files;
    EXPECT_TRUE(is_object_file(files.write("bare", std::string("FORM\0\0\0\4LWOB", 12))));
    EXPECT_TRUE(is_object_file(files.write("more", std::string("FORM\0\0\0\7LWOBabc", 15))));
    // The size is for the reader to judge.
    EXPECT_TRUE(is_object_file(files.write("size", "FORM\xFF\xFF\xFF\xFFLWOB")));
    EXPECT_FALSE(is_object_file(files.write("cut", std::string("FORM\0\0\0\4LWO", 11))));
    EXPECT_FALSE(is_object_file(files.write("later", std::string("FORM\0\0\0\4LWO2", 12))));
    EXPECT_FALSE(is_object_file(files.write("list", std::string("LIST\0\0\0\4LWOB", 12))));
    EXPECT_FALSE(is_object_file(files.write("empty", "")));
}

TEST(ObjectForm, IsSoughtInRegularFilesOnly) {
    const TemporaryFiles files;
    const std::string object = files.write("object", std::string("FORM\0\0\0\4LWOB", 12));
    std::filesystem::create_symlink(object, files.path("link"));
    EXPECT_TRUE(is_object_file(files.path("link")));
    EXPECT_FALSE(is_object_file(files.path("missing")));
    EXPECT_FALSE(is_object_file(files.folder()));
    // Opening it would wait for a writer.
    ASSERT_EQ(mkfifo(files.path("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(is_object_file(files.path("pipe")));
}

} // namespace
