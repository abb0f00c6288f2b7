// SPDX-License-Identifier: MIT
// The settings file: thirteen labelled lines of text and a closing line.
#pragma once

/// Names of the settings file: for this session, and permanently.
constexpr char session_settings[] = "ENV:Zelvo.vars";
constexpr char permanent_settings[] = "ENVARC:Zelvo.vars";

/// Writes the settings to the file of this name. Does nothing and returns 0 if it cannot be created;
/// otherwise returns what fclose returned, 0 on success. Callers ignore it.
int save_vars(const char *path);

/// Reads the settings from the file of this name over the current ones. If a label does not match, its
/// setting keeps its value, and so do the following ones, unless a later label matches the text from there.
/// No value is checked. Returns 0 and changes nothing if the file cannot be opened, otherwise 1.
int load_vars(const char *path);
