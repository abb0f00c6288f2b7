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

/// An answer to a requester.
struct FileAnswer {
    std::string drawer;
    std::string name;
};
struct ModeAnswer {
    ULONG mode_id = 0;
    ULONG width = 320;
    ULONG height = 256;
};

/// The answer to one requester. If neither part is set, the user cancels.
struct Answer {
    std::optional<FileAnswer> file;
    std::optional<ModeAnswer> mode;
};

/// The picture of one pass: palette indices, rows without padding.
struct Picture {
    int pass;
    int width;
    int height;
    std::span<const std::uint8_t> pixels;
    const host::Palette &palette;
};

/// What a recorded run drew.
struct RecordedFrames {
    int passes = 0;
    /// The sum of the frames of these passes (shared/frame_sum.h).
    std::uint64_t sum = 0;
};

/// One 256th of a second in 16.16.
constexpr ULONG default_tick = 65536 / 256;

/// Everything that a run on this host needs to know.
struct Setup {
    /// The words after the program's name.
    std::vector<std::string> command_line;
    /// The folders of ENV and ENVARC; a volume without a folder has no files.
    host::Volumes volumes;
    /// If set, opens every file instead of the system, for example from memory.
    std::function<std::FILE *(const char *name, const char *mode)> open;
    /// Files to open instead of others, by the exact name that the program asks for.
    std::map<std::string, std::string> stand_ins;
    /// What settings files hold when the run begins, by their volumes. Whoever makes the volumes' folders
    /// writes them.
    std::map<std::string, std::string> settings;
    /// What the run is to draw, if it repeats a recorded one. For whoever compares it.
    std::optional<RecordedFrames> recorded_frames;
    /// Input in the order of arrival: passes must not decrease.
    std::deque<Event> events;
    /// The pass in whose input step Esc arrives, after all other events; 0 for none.
    int last_pass = 0;
    /// Answers, in the order in which requesters appear. A requester takes the first one that is left if it
    /// is of its kind or a cancellation. Otherwise a screen-mode requester is confirmed with `default_mode`,
    /// and a file requester is cancelled.
    std::deque<Answer> answers;
    /// The mode and size that a screen-mode requester shows at first.
    ModeAnswer default_mode;
    /// How far each reading advances the clock, in 16.16 seconds; nothing for the real, monotonic clock.
    std::optional<ULONG> tick = default_tick;
    /// Calls that fail: "OpenScreenTagList" every time, "AllocScreenBuffer#3" the third time, or
    /// "OpenLibrary:asl.library" for this first argument.
    std::set<std::string> refused;
    /// The number of the one refusable call that fails, counted from 1 over all of them; 0 for none.
    int refused_point = 0;
    /// Whether every call is recorded as a line of text for `calls`.
    bool records_calls = false;
    /// Called with each frame that the program writes to the screen, exactly as it was passed.
    std::function<void(const Picture &)> on_frame;
    /// Called once per pass with the visible bitmap, after its texts are drawn.
    std::function<void(const Picture &)> on_picture;
};

/// Resets the host and starts it with this set-up.
void set_up(Setup setup);

/// The number of the current pass; 0 before the first.
int current_pass();

/// Makes Esc arrive in the next input step; may be called by a signal handler.
void request_quit();

/// The calls so far, one line each, such as `SetAPen(255)`, if they are recorded.
const std::vector<std::string> &calls();

/// What the program has opened or allocated and not given back yet, one line each, such as `screen` or
/// `library asl.library`.
std::vector<std::string> held();

/// How many calls could have been refused so far.
int refusable_points();

} // namespace offscreen
