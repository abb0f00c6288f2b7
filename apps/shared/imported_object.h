// SPDX-License-Identifier: MIT
// Objects made from models of other formats by zelvo-convert, where that is installed.
#pragma once

#include <optional>
#include <string>
#include <vector>

/// Runs `zelvo-convert --cached` on a model with these options, and returns what it prints: the object, or
/// its path. Nothing if that fails, or if zelvo-convert is not installed. Its messages on standard error are
/// shown or dropped.
std::optional<std::string> import_object(const std::string &path, const std::vector<std::string> &options,
                                         bool shows_errors);
