// SPDX-License-Identifier: MIT
// Makes and removes a temporary folder.
#include "temporary_folder.h"

#include "failure.h"

#include <cstdlib>
#include <filesystem>

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
    std::string pattern = (parent / "zelvo-XXXXXX").string();
    if (error || mkdtemp(pattern.data()) == nullptr) {
        fail("cannot make a temporary folder");
    }
    folder = pattern;
    remove_on_failure(folder);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(folder, error);
    keep_on_failure(folder);
}
