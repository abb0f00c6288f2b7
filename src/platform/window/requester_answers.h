// SPDX-License-Identifier: MIT
// Lets the user answer the program's requesters.
#pragma once

#include "platform/shared/state.h"

namespace host {

/// Lets the user choose a file; false if they cancel. The requester's drawer is then an absolute path.
bool answer_file_requester(Requester &requester);

/// Lets the user choose a display mode and a size; false if they cancel.
bool answer_mode_requester(ScreenModeRequester &requester);

} // namespace host
