// SPDX-License-Identifier: MIT
// Writes a run as an input script while it goes on, with which the offscreen host repeats it.
#pragma once

#include "platform/asl.h"
#include "platform/intuition.h"
#include "platform/shared/state.h"

#include <cstdint>
#include <map>
#include <span>
#include <string>

namespace host {

/// What a run begins with.
struct RecordedStart {
    /// The object's name on the command line; empty if that names none.
    std::string object;
    /// The settings files that there are, by their volumes, ENV and ENVARC.
    std::map<std::string, std::string> settings;
};

/// Begins to write the script; false if the file cannot be made, with the reason in errno. Every line is in
/// the file as soon as it has happened, so that also a run that crashes can be repeated. Without a recording,
/// the functions below do nothing.
bool begin_recording(const std::string &path, const RecordedStart &start);

/// The program has written the frame of the next pass.
void record_frame(std::span<const std::uint8_t> pixels, int width, int height);

/// The program has taken an event.
void record_event(const IntuiMessage &event);

/// A requester was closed.
void record_file_answer(const Requester &requester, bool is_confirmed);
void record_mode_answer(const ScreenModeRequester &requester);

/// The program has opened a file for reading, under a name that depends on the current directory; an empty
/// path if it could not.
void record_file(const std::string &name, const std::string &path);

/// Ends the recording; what could not be written is said on standard error.
void end_recording();

/// The file of the recording after this one: "run.txt" is followed by "run-2.txt", and that by "run-3.txt".
std::string next_recording(const std::string &path);

} // namespace host
