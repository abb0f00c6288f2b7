// SPDX-License-Identifier: MIT
// Where a desktop keeps settings and data.
#pragma once

#include <optional>
#include <string>

namespace host {

/// The folder of the settings that are kept for good: $XDG_CONFIG_HOME/zelvo, by default ~/.config/zelvo. It
/// need not exist. Nothing if the user has no home.
std::optional<std::string> lasting_settings_folder();

/// The folder of this login's settings: $XDG_RUNTIME_DIR/zelvo, or without a usable one a folder of the
/// user's own below the system's temporary directory. Made at its first use, as a copy of the lasting
/// settings. Nothing if it would not be the user's alone; the reason goes to standard error.
std::optional<std::string> session_settings_folder();

/// Makes the lasting folder, with those above it; false if that fails, with the reason in errno.
bool make_lasting_settings_folder(const std::string &folder);

/// The path of a file that was installed with the program; it need not exist.
std::string installed_data_path(const std::string &file);

} // namespace host
