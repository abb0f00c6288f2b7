// SPDX-License-Identifier: MIT
// The command line, which may name the object.
#pragma once

/// Parses the command line and returns the object's name, which stays valid until the line is freed. Null if
/// the line does not have exactly one name.
const char *object_name_from_command_line();

/// Frees the parsed command line, if there is one.
void free_command_line();
