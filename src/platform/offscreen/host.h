// SPDX-License-Identifier: MIT
// A host in memory: scripted input, a deterministic clock, pictures given to callbacks. Tests and
// zelvo-render run the program on it.
#pragma once

#include "platform/intuition.h"
#include "platform/posix/volume_paths.h"
#include "platform/shared/bitmap.h"

#include <cstdint>
#include <cstdio>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace offscreen {

/// An event for the input step of one pass of the frame loop; the first pass is 1.
struct Event {
    int pass = 1;
    IntuiMessage message{};
};

/// How a requester is answered.
struct FileAnswer {
    std::string drawer;
    std::string name;
};
struct ModeAnswer {
    ULONG mode_id = 0;
    ULONG width = 320;
    ULONG height = 256;
};

/// The answer to the next requester; neither of the two means cancelled.
struct Answer {
    std::optional<FileAnswer> file;
    std::optional<ModeAnswer> mode;
};

/// A picture of one pass: palette indices, rows without padding.
struct Picture {
    int pass;
    int width;
    int height;
    std::span<const std::uint8_t> pixels;
    const host::Palette &palette;
};

/// One 256th of a second in 16.16.
constexpr ULONG default_tick = 65536 / 256;

/// Everything that a run on this host depends on.
struct Setup {
    /// The words after the program's name.
    std::vector<std::string> command_line;
    /// The folders of ENV and ENVARC; a volume without a folder has no files.
    host::Volumes volumes;
    /// Opens every file in place of the system, if set, such as files in memory.
    std::function<std::FILE *(const char *name, const char *mode)> open;
    /// Files that are opened in place of others, by the exact name that the program asks for.
    std::map<std::string, std::string> stand_ins;
    /// Input, in the order of arrival; passes must not decrease.
    std::deque<Event> events;
    /// The pass in whose input step Esc arrives after all other events; 0 for none.
    int last_pass = 0;
    /// Answers, in the order in which requesters appear. A requester takes the first one if it is of its kind
    /// or a cancellation; otherwise a screen-mode requester is confirmed with `default_mode`, a file
    /// requester cancelled.
    std::deque<Answer> answers;
    /// What a screen-mode requester holds when it appears.
    ModeAnswer default_mode;
    /// What the clock advances by with each reading, in 16.16 seconds; none for the real, monotonic clock.
    std::optional<ULONG> tick = default_tick;
    /// Calls that fail: "OpenScreenTagList" every time, "AllocScreenBuffer#3" the third time, or
    /// "OpenLibrary:asl.library" for this first argument.
    std::set<std::string> refused;
    /// The number of the one refusable call that fails, counted from 1 over all of them; 0 for none.
    int refused_point = 0;
    /// Whether every call is kept as a line of text for `calls`.
    bool records_calls = false;
    /// Called with each frame that the program writes to the screen, exactly as it was passed.
    std::function<void(const Picture &)> on_frame;
    /// Called once per pass with the visible bitmap, after its texts are drawn.
    std::function<void(const Picture &)> on_picture;
};

/// Starts the host anew with this set-up.
void set_up(Setup setup);

/// The pass that is being shown, 0 before the first.
int current_pass();

/// Makes Esc arrive in the next input step; may be called by a signal handler.
void request_quit();

/// The calls so far, one line each, such as `SetAPen(255)`, if they are recorded.
const std::vector<std::string> &calls();

/// What the program holds of this host now, one line each, such as `screen` or `library
/// asl.library`.
std::vector<std::string> held();

/// How many calls could have been refused so far.
int refusable_points();

} // namespace offscreen
