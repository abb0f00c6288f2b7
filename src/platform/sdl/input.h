// SPDX-License-Identifier: MIT
// Input that is ignored after a requester was closed.
#pragma once

#include "platform/window/input.h"

namespace host {

/// Called when a requester is closed: keys and buttons that are down are ignored until they are released, and
/// so is the second half of a double click that closed it.
void ignore_what_is_held();

} // namespace host
