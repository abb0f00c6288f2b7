// SPDX-License-Identifier: MIT
// Appends lines, and keeps two numbers in the first ones up to date.
#include "platform/window/recording.h"

#include "platform/shared/blank_free_names.h"
#include "platform/shared/frame_sum.h"
#include "platform/shared/script_lines.h"

#include <algorithm>
#include <charconv>
#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <set>

namespace fs = std::filesystem;

namespace host {

namespace {

/// The script, or null without a recording; and its name. Written by begin_recording and end_recording.
std::FILE *script = nullptr;
std::string script_path;

/// The passes so far, and the sum of their frames. Written by record_frame.
int passes = 0;
FrameSum frames;

/// The names whose files are in the script. Written by record_file.
std::set<std::string> recorded_names;

constexpr char first_line[] = "# A run of Zelvo. zelvo-render --input repeats it.\n";

/// Writes the lines whose numbers change, always of the same length, after the first one. While the run goes
/// on, a repetition has one more pass, since it may be the next one that crashes.
void write_counts(int passes_to_repeat) {
    std::fseek(script, static_cast<long>(sizeof first_line - 1), SEEK_SET);
    std::fprintf(script, "passes %-10d\nframes %-10d 0x%016" PRIx64 "\n", passes_to_repeat, passes,
                 frames.value());
    std::fflush(script);
    std::fseek(script, 0, SEEK_END);
}

void append(const std::string &lines) {
    if (script != nullptr) {
        std::fputs(lines.c_str(), script);
        std::fflush(script);
    }
}

} // namespace

bool begin_recording(const std::string &path, const RecordedStart &start) {
    // A process that takes this one's place does not inherit the file.
    script = std::fopen(path.c_str(), "wbe");
    if (script == nullptr) {
        return false;
    }
    script_path = path;
    passes = 0;
    frames = {};
    recorded_names.clear();
    append(first_line);
    write_counts(1);
    if (!start.object.empty()) {
        append("object " + script_word(start.object) + "\n");
    }
    for (const auto &[volume, settings] : start.settings) {
        append(settings_lines(volume, settings));
    }
    return true;
}

void record_frame(std::span<const std::uint8_t> pixels, int width, int height) {
    if (script != nullptr) {
        ++passes;
        frames.add(pixels, width, height);
        write_counts(passes + 1);
    }
}

void record_event(const IntuiMessage &event) {
    append(event_line(passes, event));
}

void record_file_answer(const Requester &requester, bool is_confirmed) {
    append(is_confirmed ? file_answer_line(requester.drawer, requester.file) : "answer cancel\n");
}

void record_mode_answer(const ScreenModeRequester &requester) {
    append(mode_answer_line(requester));
}

void record_file(const std::string &name, const std::string &path) {
    if (script != nullptr && recorded_names.insert(name).second) {
        append(file_line(name, without_blanks(path)));
    }
}

void end_recording() {
    if (script == nullptr) {
        return;
    }
    write_counts(std::max(passes, 1));
    const bool is_written = std::ferror(script) == 0;
    const bool is_closed = std::fclose(script) == 0;
    script = nullptr;
    if (!is_written || !is_closed) {
        std::fprintf(stderr, "zelvo: the recording is incomplete: %s\n", script_path.c_str());
    }
}

std::string next_recording(const std::string &path) {
    const fs::path file(path);
    const std::string stem = file.stem().string();
    const std::size_t dash = stem.rfind('-');
    int number = 1;
    std::string name = stem;
    if (dash != std::string::npos) {
        const char *end = stem.data() + stem.size();
        const auto [stop, error] = std::from_chars(stem.data() + dash + 1, end, number);
        const bool is_numbered = error == std::errc{} && stop == end && number > 1;
        name = is_numbered ? stem.substr(0, dash) : stem;
        number = is_numbered ? number : 1;
    }
    return (file.parent_path() / (name + "-" + std::to_string(number + 1) + file.extension().string()))
        .string();
}

} // namespace host
