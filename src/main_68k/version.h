// SPDX-License-Identifier: MIT
// The version tag.
#pragma once

/// The text that the system's version command searches the executable for.
constexpr char version_tag[] = "$VER: Zelvo 0.67 OS4 (23-Feb-2005)";

/// The tag without its marker, as users see it.
constexpr const char *shown_version = version_tag + sizeof "$VER: " - 1;
