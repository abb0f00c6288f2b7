// SPDX-License-Identifier: MIT
// What zelvo --help prints.
#pragma once

/// Fits a terminal of 24 lines of 80 characters.
extern const char help_text[];
