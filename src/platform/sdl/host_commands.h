// SPDX-License-Identifier: MIT
// What the desktop host does for the user besides the program. The program does not notice.
#pragma once

#include <string>

namespace host {

enum class HostCommand { show_keys, save_picture, open_object, open_next, open_previous };

/// Carries a command out while a screen is open, between two passes.
void carry_out(HostCommand command);

/// Ends this run and begins one on another object; where the file is none, a notice says so and this run goes
/// on.
void open_object(const std::string &path);

} // namespace host
