// SPDX-License-Identifier: MIT
// Lets the user answer the program's requesters.
#pragma once

#include "platform/shared/state.h"

#include <optional>
#include <string>

namespace host {

/// Lets the user choose a file; false if they cancel. The requester's drawer is then an absolute path.
bool answer_file_requester(Requester &requester);

/// Lets the user choose an object; its path, nothing if the requester was cancelled. `initial_path` is
/// selected at first.
std::optional<std::string> choose_object(const std::string &title, const std::string &initial_path);

/// Lets the user choose a display mode and a size, unless they were chosen before; false if they cancel.
bool answer_mode_requester(ScreenModeRequester &requester);

} // namespace host
