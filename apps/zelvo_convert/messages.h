// SPDX-License-Identifier: MIT
// What the process that reads a model says to the tool.
#pragma once

#include <cstddef>
#include <string>

namespace convert {

/// The kinds of messages. Progress is one byte, in percent; the others are text, and an object is a file.
constexpr char progress_message = 'p';
constexpr char summary_message = 's';
constexpr char note_message = 'n';
constexpr char failure_message = 'f';
constexpr char object_message = 'o';
/// Another file that belongs to the model, or would if it existed.
constexpr char other_file_message = 'd';

/// The tool's exit code if a file could not be converted.
constexpr int exit_failure = 1;

/// Says how much of the work is done.
void send_progress(int percent);

/// Sends the line that says what the model is. It is printed before all notes.
void send_summary(const std::string &line);

/// Sends a line that the tool prints about the model.
void send_note(const std::string &line);

/// Sends a note such as `2 polygons left out: no area`, unless the count is 0.
void note_if(std::size_t count, const std::string &noun, const std::string &what);

/// Says why there will be no object, and ends the process.
[[noreturn]] void refuse(const std::string &why);

/// `1 polygon`, `2 polygons`, `1,234,567 polygons`.
std::string counted(std::size_t count, const std::string &noun);

} // namespace convert
