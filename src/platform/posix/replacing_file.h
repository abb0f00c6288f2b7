// SPDX-License-Identifier: MIT
// Opening files by path. What is saved replaces an older file only when it is whole.
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
/// before the disk has room for it, but a program that reads it in that moment, or a crash then, may find it
/// half written.
///
/// Null if an existing file may not be written, or a new one not be made.
std::FILE *open_for_saving(const std::string &path, OnFailedSave on_failure = {});

/// fopen for things that can be read and written like files: regular ones and character devices. A folder, a
/// pipe or a socket gives null, since one cannot be read and the others may block for ever. What is written
/// is saved when it is closed (open_for_saving); `on_failed_save` is called if it cannot be opened or saved.
std::FILE *open_plain_file(const std::string &path, const char *mode,
                           const OnFailedSave &on_failed_save = {});

/// Says on standard error that what was written under a name of the program was not saved, its path (empty if
/// there is none), and why, by a value of errno. Returns that text, a line
/// without its end.
std::string report_failed_save(const std::string &name, const std::string &path, int error);

} // namespace host
