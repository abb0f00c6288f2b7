// SPDX-License-Identifier: MIT
// Tells the user when settings were not saved, since the program itself does not.
#pragma once

#include <string>

namespace host {

/// Says on standard error that `name` was not saved at `path` (empty if it has none), and why. If standard
/// error is not a terminal, the first call also shows this in a requester.
void tell_of_failed_save(const std::string &name, const std::string &path, int error);

} // namespace host
