// SPDX-License-Identifier: MIT
// A folder in which zelvo-convert runs.
#pragma once

#include "object_reading.h"
#include "support/tool_run.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

class ConvertTest : public testing::Test {
protected:
    using Words = std::vector<std::string>;

    ToolRun convert(const Words &arguments) const {
        return run_tool("zelvo-convert", arguments, {files.folder(), files.folder(), {}});
    }

    /// Converts a file and returns its object; what was printed is in `printed`.
    ReadObject converted(const std::string &input, Words options = {}) {
        options.insert(options.end(), {input, "-o", "out.lwo"});
        const ToolRun run = convert(options);
        EXPECT_EQ(run.exit_code, 0) << input;
        EXPECT_EQ(run.errors, "") << input;
        printed = run.output;
        return parse_object(files.read("out.lwo"));
    }

    ReadObject converted_obj(const std::string &text, const Words &options = {}) {
        return converted(files.write("model.obj", text), options);
    }

    bool was_printed(const std::string &text) const { return printed.find(text) != std::string::npos; }

    /// Names of all files in the folder.
    Words names() const {
        Words found;
        for (const auto &entry : std::filesystem::directory_iterator(files.folder())) {
            found.push_back(entry.path().filename().string());
        }
        std::ranges::sort(found);
        return found;
    }

    TemporaryFiles files;
    std::string printed;
};
