// SPDX-License-Identifier: MIT
// What the input keeps from the program after a requester.
#pragma once

#include "platform/window/input.h"

namespace host {

/// Called when a requester is closed: keys and buttons that are down are ignored until they are released, and
/// so is the second half of a double click that closed it.
void ignore_what_is_held();

} // namespace host
