// SPDX-License-Identifier: MIT
// Where objects are written.
#pragma once

#include "options.h"

#include <set>
#include <string>

namespace convert {

/// The paths of the outputs.
class Outputs {
public:
    explicit Outputs(const Options &options);
    ~Outputs();
    Outputs(const Outputs &) = delete;
    Outputs &operator=(const Outputs &) = delete;

    /// Where the object of an input goes; empty if none is written.
    std::string path_for(const std::string &input) const;

    /// Reserves a path; false if it is already reserved.
    bool take(const std::string &path);

    /// Opens the viewer on the object and waits for its end. False, with a line on standard error, if it
    /// cannot be started.
    bool view() const;

private:
    const Options &options;
    /// A folder for an object that is only viewed; removed at the end.
    std::string temporary_folder;
    std::set<std::string> taken;
};

/// Why the object of this input cannot be written to this path; empty if it can.
std::string unwritable(const std::string &input, const std::string &path);

} // namespace convert
