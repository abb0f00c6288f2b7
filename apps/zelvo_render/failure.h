// SPDX-License-Identifier: MIT
// The tool's own way out, which leaves nothing unfinished.
#pragma once

#include <string>

/// Ends the tool with its own exit code after saying why on standard error. What was named to
/// remove_on_failure is removed first.
[[noreturn]] void fail(const std::string &why);

/// Ends the tool because of this file, with what the system said last.
[[noreturn]] void fail_on(const std::string &path);

/// Names a file or a folder, with all that is in it, to be removed if the tool fails; and takes that back.
void remove_on_failure(const std::string &path);
void keep_on_failure(const std::string &path);
