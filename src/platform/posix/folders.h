// SPDX-License-Identifier: MIT
// Where settings and data are on a desktop.
#pragma once

#include <optional>
#include <string>

namespace host {

/// The folder of the lasting settings: $XDG_CONFIG_HOME/zelvo, by default ~/.config/zelvo. It need not exist.
/// Nothing if the user has no home folder.
std::optional<std::string> lasting_settings_folder();

/// The folder of this login's settings: $XDG_RUNTIME_DIR/zelvo, or a folder in the system's temporary
/// directory if that variable is not usable. Created at its first use as a copy of the lasting settings.
/// Nothing if others can write to it, with the reason on standard error.
std::optional<std::string> session_settings_folder();

/// Creates the lasting folder and its parents; false if that fails, with the reason in errno.
bool make_lasting_settings_folder(const std::string &folder);

/// The path of a file that was installed with the program; it need not exist.
std::string installed_data_path(const std::string &file);

} // namespace host
