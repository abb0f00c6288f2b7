// SPDX-License-Identifier: MIT
// The lines of input scripts, by which a run can be repeated; offscreen/input_script.h lists them.
#pragma once

#include "platform/asl.h"
#include "platform/intuition.h"

#include <string>

namespace host {

/// An event that arrived in the input step of a pass.
std::string event_line(int pass, const IntuiMessage &event);

/// What a file requester was answered. The names must have no white space.
std::string file_answer_line(const std::string &drawer, const std::string &file);

/// What a screen-mode requester held when it was closed, however it was.
std::string mode_answer_line(const ScreenModeRequester &requester);

/// Which file was opened under a name; an empty path if none could be. Both must have no white space.
std::string file_line(const std::string &name, const std::string &path);

/// The lines of a settings file that a volume begins with, ENV or ENVARC.
std::string settings_lines(const std::string &volume, const std::string &settings);

/// A word of a script for this text, which must have no white space.
std::string script_word(const std::string &text);

} // namespace host
