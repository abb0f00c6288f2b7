// SPDX-License-Identifier: MIT
// Files that replace an older one only when they are whole.
#pragma once

#include <cstdio>
#include <string>

namespace host {

/// Opens a file for writing that takes the place of `path` when it is closed: until then the bytes go into a
/// hidden file beside it. If a write or the closing fails (a full disk), the hidden file is removed, what was
/// at `path` stays whole, and fclose returns EOF. A link is followed, so that its target is replaced; an
/// existing file keeps its mode. Null if the folder or the existing file cannot be written.
std::FILE *open_replacing(const std::string &path);

} // namespace host
