// SPDX-License-Identifier: MIT
// The thumbnail as a file.
#pragma once

#include "thumbnail.h"

#include <string>

/// Writes the thumbnail as a PNG of 8-bit grey and alpha. A new file appears whole under its name or not at
/// all, and an older one is replaced in the same way. But an empty file is filled: a thumbnail service makes
/// one, keeps it open and reads from it. A link, a device or a pipe is written to as well. The process ends
/// if the thumbnail cannot be written, and leaves an empty file empty.
void write_thumbnail(const std::string &path, const Thumbnail &thumbnail);
