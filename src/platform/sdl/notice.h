// SPDX-License-Identifier: MIT
// What the host itself has to say.
#pragma once

#include "platform/window/requesters.h"

#include <string>

namespace host {

/// Shows a text until the user closes it.
void show_notice(const std::string &title, const std::string &text, const WhileOpen &while_open);

/// Shows a notice over the viewer until the user has closed it; nothing where there can be none.
void show_notice_over_viewer(const std::string &title, const std::string &text);

} // namespace host
