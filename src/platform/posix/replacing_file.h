// SPDX-License-Identifier: MIT
// Opening files by path. A saved file replaces an older one only when it is complete.
#pragma once

#include <cstdio>
#include <functional>
#include <string>

namespace host {

/// Called with a value of errno when a file could not be opened for saving, or could not be saved on closing.
using OnFailedSave = std::function<void(int error)>;

/// Opens a file for saving. The file at `path` does not change before the stream is closed; then the bytes go
/// into a hidden file beside it, which replaces it. If that fails (a full disk), the hidden file is removed,
/// the old file stays whole, and fclose returns EOF. An existing file keeps its mode. A link is followed: its
/// target is replaced, or created.
///
/// If the folder does not let a file be created or replaced, the existing file is written in place. The room
/// on the disk is reserved first, but a reader or a crash at that moment may find the file half written.
///
/// Null if an existing file may not be written, or a new one cannot be created.
std::FILE *open_for_saving(const std::string &path, OnFailedSave on_failure = {});

/// fopen for regular files and character devices only. A folder cannot be read, and a pipe or a socket may
/// block forever, so these give null. A file opened for writing is saved when it is closed (open_for_saving);
/// `on_failed_save` is called if it cannot be opened or saved.
std::FILE *open_plain_file(const std::string &path, const char *mode,
                           const OnFailedSave &on_failed_save = {});

/// Says on standard error that the file that the program calls `name` was not saved at `path` (empty if it
/// has none), and why. Returns that line, without its end.
std::string report_failed_save(const std::string &name, const std::string &path, int error);

} // namespace host
