// SPDX-License-Identifier: MIT
// The thumbnailer's way out when there is no thumbnail to make.
#pragma once

#include <string>

/// Exit codes: a wrong command line or an output that cannot be written, and an object without a picture.
constexpr int exit_misuse = 2;
constexpr int exit_no_picture = 20;

/// Names the file that every following failure is about; empty for none.
void set_failing_file(const std::string &path);

/// Says why in one line on standard error and ends the process. A file's name may have characters that would
/// end the line or steer a terminal; they become question marks.
[[noreturn]] void fail(int exit_code, const std::string &why);
