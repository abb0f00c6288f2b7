// SPDX-License-Identifier: MIT
// What the host asks the user. The types are plain, because a toolkit's names may clash with the program's.
// Every host with a window defines these functions.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace host {

/// What an open requester must do.
enum class Order { wait, come_forward, cancel };

/// Called about 20 times a second while a requester is open.
using WhileOpen = std::function<Order()>;

/// A kind of file to choose from.
struct FileFilter {
    std::string name;
    std::vector<std::string> patterns;
};

/// What a file requester shows.
struct FileQuestion {
    std::string title;
    /// The path of the file that is selected at first; may be empty.
    std::string initial_path;
    /// The first one is active when the requester opens.
    std::vector<FileFilter> filters;
    /// Tries to open the chosen file: the system's error number, 0 if it could be opened.
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

/// Whether requesters can be shown. The first call starts the toolkit; if that fails, the reason goes to
/// standard error.
bool can_show_requesters();

/// Called in every pass. Lets the toolkit give other programs the text that the user copied in a requester,
/// even after the requester was closed. Does not wait, and does nothing before the toolkit was started.
void serve_toolkit();

/// The path of the file that the user chose; nothing if they cancelled. If the chosen file cannot be opened,
/// the user is shown why and may choose again.
std::optional<std::string> ask_for_file(const FileQuestion &question, const WhileOpen &while_open);

/// The mode and size that the user confirmed; nothing if they cancelled.
std::optional<ModeQuestion> ask_for_mode(const std::vector<ModeName> &modes, const ModeQuestion &initial,
                                         const WhileOpen &while_open);

} // namespace host
