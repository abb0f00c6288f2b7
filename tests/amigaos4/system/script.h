// SPDX-License-Identifier: MIT
// The input: the events of each pass, and the answers of the requesters.
#pragma once

#include <intuition/intuition.h>

#include <optional>
#include <string>

namespace amiga {

/// An event of a pass; only class, code and movement are set.
struct Event {
    int pass = 0;
    ULONG event_class = 0;
    UWORD code = 0;
    int16 dx = 0;
    int16 dy = 0;
};

/// A requester's answer; neither a file nor a mode if the user cancels.
struct Answer {
    bool is_file = false;
    bool is_mode = false;
    std::string drawer;
    std::string file;
    ULONG mode_id = 0;
    ULONG width = 0;
    ULONG height = 0;
};

/// Counts a frame that the program wrote, which is a pass.
void begin_input_of_pass();

/// The next event of this pass or an earlier one; nothing if there is none.
std::optional<Event> next_event();

/// The next answer; a cancelled one if there is none left.
Answer next_answer();

} // namespace amiga
