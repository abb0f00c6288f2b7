// SPDX-License-Identifier: MIT
// Files that replace an older one only when they are whole.
#pragma once

#include <cstdio>
#include <functional>
#include <string>

namespace host {

/// Called with the reason, a value of errno, when a file could not be opened for saving, or not be saved when
/// it was closed.
using OnFailedSave = std::function<void(int error)>;

/// Opens a file for saving. Nothing changes before it is closed; then its bytes go into a hidden file beside
/// `path`, which takes the place of what was there. If that fails (a full disk), the hidden file is removed,
/// what was at `path` stays whole, and fclose returns EOF. An existing file keeps its mode. A link is
/// followed, so that its target is replaced, or made where there is none yet.
///
/// Where no file can be made beside it, or none can take its place, an existing file is written in place: not
/// before the disk has room for it, but whoever reads or stops it in that moment may find it half written.
///
/// Null if an existing file may not be written, or a new one not be made.
std::FILE *open_for_saving(const std::string &path, OnFailedSave on_failure = {});

} // namespace host
