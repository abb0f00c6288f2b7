// SPDX-License-Identifier: MIT
// A folder for the files of one test.
#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

/// A new folder that is removed at the end with everything in it.
class TemporaryFiles {
public:
    TemporaryFiles() {
        std::string pattern = (std::filesystem::temp_directory_path() / "zelvo-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("cannot make " + pattern);
        }
        folder_path = pattern;
    }
    ~TemporaryFiles() {
        std::error_code error;
        std::filesystem::remove_all(folder_path, error);
    }
    TemporaryFiles(const TemporaryFiles &) = delete;
    TemporaryFiles &operator=(const TemporaryFiles &) = delete;

    const std::string &folder() const { return folder_path; }
    std::string path(const std::string &name) const { return folder_path + "/" + name; }

    /// Writes a file and returns its path.
    std::string write(const std::string &name, const std::string &bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

    /// The contents of a file; empty if there is none.
    std::string read(const std::string &name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

private:
    std::string folder_path;
};
