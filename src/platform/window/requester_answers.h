// SPDX-License-Identifier: MIT
// Lets the user answer the program's requesters.
#pragma once

#include "platform/shared/state.h"

namespace host {

/// Lets the user choose a file. The drawer that the requester then holds is an absolute path.
bool answer_file_requester(Requester &requester);

/// Lets the user choose a display mode and a size.
bool answer_mode_requester(ScreenModeRequester &requester);

} // namespace host
