// SPDX-License-Identifier: MIT
// Where objects are written.
#pragma once

#include "options.h"

#include <filesystem>
#include <set>
#include <string>
#include <sys/types.h>
#include <utility>

namespace convert {

/// The device of a file, and its number there.
using FileIdentity = std::pair<dev_t, ino_t>;

/// The paths of the outputs.
class Outputs {
public:
    explicit Outputs(const Options &options);
    ~Outputs();
    Outputs(const Outputs &) = delete;
    Outputs &operator=(const Outputs &) = delete;

    /// Where the object of an input goes; empty if none is written.
    std::string path_for(const std::string &input) const;

    /// Reserves a path for an object. Returns why that cannot be; empty if it is reserved now. No input is
    /// replaced, and no path is used twice.
    std::string take(const std::string &path);

    /// Opens the viewer on the object and waits for its end. False, with a line on standard error, if it
    /// cannot be started.
    bool view() const;

private:
    const Options &options;
    /// A folder for an object that is only viewed; removed at the end.
    std::string temporary_folder;
    std::set<FileIdentity> inputs;
    /// The reserved paths.
    std::set<std::filesystem::path> taken;
};

} // namespace convert
