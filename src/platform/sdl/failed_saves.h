// SPDX-License-Identifier: MIT
// Telling the user about settings that were not saved, which the program does not.
#pragma once

#include <string>

namespace host {

/// Says on standard error why what was written under a name was not saved at this path, which is empty if
/// there is none; where standard error is no terminal, the first time also in a requester.
void tell_of_failed_save(const std::string &name, const std::string &path, int error);

} // namespace host
