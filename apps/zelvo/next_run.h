// SPDX-License-Identifier: MIT
// Another run after this one, in the same process and on another object.
#pragma once

#include "platform/sdl/host.h"

/// Remembers what a run that follows this one begins with.
void prepare_next_run(const sdl::Setup &setup);

/// Makes the next run, if the user asked for one, begin when this one has ended. To be called when nothing
/// but the orderly end is left of this run.
void start_next_run_at_end();
