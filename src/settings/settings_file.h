// SPDX-License-Identifier: MIT
// The settings file: thirteen labelled lines of text and a closing line.
#pragma once

/// The settings' two places: for this session, and for good.
constexpr char session_settings[] = "ENV:Zelvo.vars";
constexpr char permanent_settings[] = "ENVARC:Zelvo.vars";

/// Writes the settings to the file of this name; nothing happens if it cannot be created. Returns what
/// closing the file returned, 0 if all went well; nobody looks.
int save_vars(const char *path);

/// Reads the settings from the file of this name over the current ones. A label that does not match ends the
/// matching: that item and those that follow keep their values, unless a later label matches from there.
/// Values are taken as they stand. Returns 0 and changes nothing if the file cannot be opened, otherwise 1.
int load_vars(const char *path);
