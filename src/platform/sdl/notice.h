// SPDX-License-Identifier: MIT
// What the host itself has to say while the viewer runs.
#pragma once

#include <string>

namespace host {

/// Shows a notice over the viewer until the user has closed it; nothing where there can be none.
void show_notice_over_viewer(const std::string &title, const std::string &text);

} // namespace host
