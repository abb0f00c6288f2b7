// SPDX-License-Identifier: MIT
// Makes and removes a temporary folder.
#include "temporary_folder.h"

#include "output_file.h"

#include <cstdlib>
#include <filesystem>

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
    std::string pattern = (parent / "zelvo-XXXXXX").string();
    if (error || mkdtemp(pattern.data()) == nullptr) {
        give_up("cannot make a temporary folder");
    }
    folder = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(folder, error);
}
