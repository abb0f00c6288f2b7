// SPDX-License-Identifier: MIT
// A temporary folder that is removed with its owner.
#pragma once

#include <string>

/// A new, private, empty folder in the system's temporary folder; removed with its contents.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    const std::string &path() const { return folder; }

private:
    std::string folder;
};
