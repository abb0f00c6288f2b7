// SPDX-License-Identifier: MIT
// Objects of models in other formats, through zelvo-convert where that is installed.
#pragma once

#include <optional>
#include <string>
#include <vector>

/// Has zelvo-convert make an object of a model, or find it in the user's cache, and returns what it prints
/// with these options. Nothing if it is not installed, or cannot; then it has said why on standard error, if
/// that is shown.
std::optional<std::string> import_object(const std::string &path, const std::vector<std::string> &options,
                                         bool shows_errors);
