// SPDX-License-Identifier: MIT
// The version tag.
#pragma once

/// What the system's version command looks for in the executable.
constexpr char version_tag[] = "$VER: Zelvo 0.67 OS4 (23-Feb-2005)";
