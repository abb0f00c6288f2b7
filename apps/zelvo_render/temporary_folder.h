// SPDX-License-Identifier: MIT
// A folder that goes away with its owner.
#pragma once

#include <string>

/// A new, private, empty folder below the system's temporary one; removed with all that is in it.
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
