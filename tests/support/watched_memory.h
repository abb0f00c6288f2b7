// SPDX-License-Identifier: MIT
// Records the order in which the program frees its memory.
#pragma once

#include <string>

/// Notes from here on when this memory is freed, under a name that must live on. The test programs are linked
/// so that the program's free arrives here first.
void watch_memory(const void *memory, const char *name);

/// The names of what was freed so far, in order, with a blank after each.
std::string freed_memory();

/// The last call of the host, as recorded, before the memory of this name was freed; empty if it was not.
std::string call_before_freeing(const std::string &name);
