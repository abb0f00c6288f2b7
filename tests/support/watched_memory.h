// SPDX-License-Identifier: MIT
// Records the order in which the program frees its memory.
#pragma once

#include <string>

/// From now on, records when this memory is freed, under this name, which must outlive the recording. The
/// test programs are linked so that the program's calls of free arrive here.
void watch_memory(const void *memory, const char *name);

/// The names of the memory freed so far, in order, each followed by a blank.
std::string freed_memory();

/// The last recorded call of the host before the memory with this name was freed; empty if it was not freed.
std::string call_before_freeing(const std::string &name);
