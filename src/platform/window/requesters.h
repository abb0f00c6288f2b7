// SPDX-License-Identifier: MIT
// What the host asks the user, in plain types: a toolkit's own names may clash with the program's. Every host
// with a window defines these functions.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace host {

/// What a requester that is open is to do.
enum class Order { wait, come_forward, cancel };

/// Called about 20 times a second while a requester is open.
using WhileOpen = std::function<Order()>;

/// A kind of files to choose from.
struct FileFilter {
    std::string name;
    std::vector<std::string> patterns;
};

/// What a file requester shows.
struct FileQuestion {
    std::string title;
    /// The path of the file that is selected at first; may be empty.
    std::string initial_path;
    /// The first one applies at first.
    std::vector<FileFilter> filters;
    /// Tries to open a file that was chosen: the system's error number, 0 if it could be opened.
    std::function<int(const std::string &path)> error_of_opening;
};

/// One mode to choose from.
struct ModeName {
    std::uint32_t id;
    std::string name;
};

/// What the screen-mode requester holds.
struct ModeQuestion {
    std::uint32_t mode_id;
    int width;
    int height;
};

/// Whether requesters can be shown; starts the toolkit at the first call. A failure's reason goes to standard
/// error.
bool can_show_requesters();

/// Lets the toolkit answer other programs that ask for a text copied in a requester that is closed by now.
/// Called in every pass. Does not wait, and does nothing before the toolkit was started.
void serve_toolkit();

/// The path of the file that the user chose, nothing if the requester was cancelled. A file that cannot be
/// opened is not taken: the user reads why and may choose again.
std::optional<std::string> ask_for_file(const FileQuestion &question, const WhileOpen &while_open);

/// The mode and size that the user confirmed, nothing if the requester was cancelled.
std::optional<ModeQuestion> ask_for_mode(const std::vector<ModeName> &modes, const ModeQuestion &initial,
                                         const WhileOpen &while_open);

/// Shows a text until the user closes it.
void show_notice(const std::string &title, const std::string &text, const WhileOpen &while_open);

} // namespace host
