// SPDX-License-Identifier: MIT
// The list of all keys, as a window.
#pragma once

#include "platform/window/requesters.h"

namespace host {

/// Shows the list until the user closes it or `while_open` cancels.
void show_key_list(const WhileOpen &while_open);

} // namespace host
