// SPDX-License-Identifier: MIT
// Ends the tool on an error, without leaving unfinished files.
#pragma once

#include <string>

/// Says why on standard error and ends the tool with its exit code for errors. First removes everything that
/// was given to remove_on_failure.
[[noreturn]] void fail(const std::string &why);

/// Ends the tool with an error about this file: the system's last one (errno).
[[noreturn]] void fail_on(const std::string &path);

/// Registers a file, or a folder with its contents, to be removed if the tool fails; keep_on_failure undoes
/// it.
void remove_on_failure(const std::string &path);
void keep_on_failure(const std::string &path);
