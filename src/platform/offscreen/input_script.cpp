// SPDX-License-Identifier: MIT
// Parses input scripts.
#include "platform/offscreen/input_script.h"

#include "platform/shared/held_messages.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace offscreen {

namespace {

using Words = std::vector<std::string>;

bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

/// The end of the quoted word that begins at `at`: the first double quote before a blank or the end of the
/// line; npos if there is none.
std::size_t end_of_quoted_word(const std::string &line, std::size_t at) {
    std::size_t end = line.find('"', at + 1);
    while (end != std::string::npos && end + 1 < line.size() && !is_blank(line[end + 1])) {
        end = line.find('"', end + 1);
    }
    return end;
}

/// Splits a line at blanks. A quoted word may contain blanks and loses its quotes. A word of one double quote
/// is that character. Nothing if a longer word begins with a double quote that is not closed.
std::optional<Words> split(const std::string &line) {
    Words words;
    std::size_t at = 0;
    while (true) {
        while (at < line.size() && is_blank(line[at])) {
            ++at;
        }
        if (at == line.size()) {
            return words;
        }
        const bool is_quoted = line[at] == '"';
        const std::size_t quote = is_quoted ? end_of_quoted_word(line, at) : std::string::npos;
        if (quote != std::string::npos) {
            words.push_back(line.substr(at + 1, quote - at - 1));
            at = quote + 1;
            continue;
        }
        const std::size_t end = std::min(line.find_first_of(" \t\r", at), line.size());
        if (is_quoted && end - at > 1) {
            return std::nullopt;
        }
        words.push_back(line.substr(at, end - at));
        at = end;
    }
}

/// Reads a whole word as a number within these bounds.
std::optional<std::int64_t> number(const std::string &word, std::int64_t lowest, std::int64_t highest) {
    const bool is_hexadecimal = word.starts_with("0x") || word.starts_with("0X");
    const char *first = word.data() + (is_hexadecimal ? 2 : 0);
    const char *last = word.data() + word.size();
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(first, last, value, is_hexadecimal ? 16 : 10);
    if (error != std::errc{} || end != last || value < lowest || value > highest ||
        (is_hexadecimal && *first == '-')) {
        return std::nullopt;
    }
    return value;
}

/// A code written as 0xNN.
std::optional<UWORD> code(const std::string &word) {
    const auto value = word.size() == 4 && word.starts_with("0x") ? number(word, 0, 0xFF) : std::nullopt;
    return value ? std::optional(static_cast<UWORD>(*value)) : std::nullopt;
}

std::optional<IntuiMessage> key_message(const Words &words) {
    if (words.size() != 3) {
        return std::nullopt;
    }
    if (words[2].size() == 1) {
        return host::event_message(IDCMP_VANILLAKEY, static_cast<unsigned char>(words[2][0]));
    }
    const auto character = code(words[2]);
    return character ? std::optional(host::event_message(IDCMP_VANILLAKEY, *character)) : std::nullopt;
}

std::optional<IntuiMessage> raw_key_message(const Words &words) {
    const auto raw_code = words.size() == 3 ? code(words[2]) : std::nullopt;
    return raw_code ? std::optional(host::event_message(IDCMP_RAWKEY, *raw_code)) : std::nullopt;
}

std::optional<IntuiMessage> move_message(const Words &words) {
    if (words.size() != 4) {
        return std::nullopt;
    }
    constexpr std::int64_t lowest = std::numeric_limits<WORD>::min();
    constexpr std::int64_t highest = std::numeric_limits<WORD>::max();
    const auto dx = number(words[2], lowest, highest);
    const auto dy = number(words[3], lowest, highest);
    if (!dx || !dy) {
        return std::nullopt;
    }
    IntuiMessage result = host::event_message(IDCMP_MOUSEMOVE, 0);
    result.MouseX = static_cast<WORD>(*dx);
    result.MouseY = static_cast<WORD>(*dy);
    return result;
}

std::optional<IntuiMessage> button_message(const Words &words) {
    if (words.size() != 3 || (words[2] != "left" && words[2] != "right")) {
        return std::nullopt;
    }
    return host::event_message(IDCMP_MOUSEBUTTONS, words[2] == "left" ? SELECTDOWN : MENUDOWN);
}

std::optional<Event> parse_event(const Words &words) {
    const auto pass = number(words[0], 1, std::numeric_limits<int>::max());
    if (!pass || words.size() < 2) {
        return std::nullopt;
    }
    std::optional<IntuiMessage> parsed;
    if (words[1] == "key") {
        parsed = key_message(words);
    } else if (words[1] == "rawkey") {
        parsed = raw_key_message(words);
    } else if (words[1] == "move") {
        parsed = move_message(words);
    } else if (words[1] == "button") {
        parsed = button_message(words);
    }
    return parsed ? std::optional(Event{static_cast<int>(*pass), *parsed}) : std::nullopt;
}

std::optional<Answer> parse_mode_answer(const Words &words) {
    // Sizes that no screen can have are allowed: a requester can return them.
    constexpr std::int64_t lowest = std::numeric_limits<LONG>::min();
    constexpr std::int64_t highest = std::numeric_limits<LONG>::max();
    const auto mode_id = number(words[2], lowest, std::numeric_limits<ULONG>::max());
    const auto width = number(words[3], lowest, highest);
    const auto height = number(words[4], lowest, highest);
    if (!mode_id || !width || !height) {
        return std::nullopt;
    }
    return Answer{
        {},
        ModeAnswer{static_cast<ULONG>(*mode_id), static_cast<ULONG>(*width), static_cast<ULONG>(*height)}};
}

std::optional<Answer> parse_answer(const Words &words) {
    if (words.size() == 2 && words[1] == "cancel") {
        return Answer{};
    }
    if (words.size() == 4 && words[1] == "file") {
        return Answer{FileAnswer{words[2], words[3]}, {}};
    }
    if (words.size() == 5 && words[1] == "mode") {
        return parse_mode_answer(words);
    }
    return std::nullopt;
}

/// Appends a line to what a settings file holds. The lines' ends are between them, so that the file's last
/// line has one only if an empty line comes after it.
void add_settings_line(const std::string &volume, const std::string &text, Setup &script) {
    const bool is_first = !script.settings.contains(volume);
    std::string &settings = script.settings[volume];
    settings += (is_first ? "" : "\n") + text;
}

/// Takes a line of a settings file, whose text is everything after the first blank; false if it is none.
bool read_settings_line(const std::string &line, Setup &script) {
    const std::size_t end = std::min(line.find(' '), line.size());
    const std::string word = line.substr(0, end);
    const std::string text = line.substr(std::min(end + 1, line.size()));
    if (word == "env") {
        add_settings_line("ENV", text, script);
    } else if (word == "envarc") {
        add_settings_line("ENVARC", text, script);
    }
    return word == "env" || word == "envarc";
}

std::optional<RecordedFrames> parse_frames(const Words &words) {
    const auto passes =
        words.size() == 3 ? number(words[1], 0, std::numeric_limits<int>::max()) : std::nullopt;
    std::uint64_t sum = 0;
    if (!passes || words[2].size() != 18 || !words[2].starts_with("0x")) {
        return std::nullopt;
    }
    const char *last = words[2].data() + words[2].size();
    const auto [end, error] = std::from_chars(words[2].data() + 2, last, sum, 16);
    return error == std::errc{} && end == last ? std::optional(RecordedFrames{static_cast<int>(*passes), sum})
                                               : std::nullopt;
}

/// Takes a line about the whole run; nothing if it is none, otherwise whether it is well-formed.
std::optional<bool> read_run_line(const Words &words, Setup &script) {
    if (words[0] == "object" && words.size() == 2) {
        script.command_line = {words[1]};
        return true;
    }
    if (words[0] == "file" && words.size() == 3) {
        script.stand_ins[words[1]] = words[2];
        return true;
    }
    if (words[0] == "passes" && words.size() == 2) {
        const auto passes = number(words[1], 1, std::numeric_limits<int>::max());
        script.last_pass = static_cast<int>(passes.value_or(0));
        return passes.has_value();
    }
    if (words[0] == "frames") {
        script.recorded_frames = parse_frames(words);
        return script.recorded_frames.has_value();
    }
    const bool is_about_run = words[0] == "object" || words[0] == "file" || words[0] == "passes";
    return is_about_run ? std::optional(false) : std::nullopt;
}

/// Adds one line to the script; returns what is wrong with it, or nothing.
std::optional<std::string> read_line(const std::string &line, Setup &script) {
    if (read_settings_line(line, script)) {
        return std::nullopt;
    }
    const std::optional<Words> split_line = split(line);
    if (!split_line) {
        return "a double quote is not closed";
    }
    const Words &words = *split_line;
    if (words.empty() || words[0][0] == '#') {
        return std::nullopt;
    }
    if (const std::optional<bool> is_well_formed = read_run_line(words, script)) {
        return *is_well_formed ? std::nullopt : std::optional("not a line about a run: " + line);
    }
    if (words[0] == "answer") {
        const std::optional<Answer> answer = parse_answer(words);
        if (!answer) {
            return "not an answer: " + line;
        }
        script.answers.push_back(*answer);
        return std::nullopt;
    }
    const std::optional<Event> event = parse_event(words);
    if (!event) {
        return "not an event: " + line;
    }
    script.events.push_back(*event);
    return std::nullopt;
}

} // namespace

std::optional<ScriptError> read_script(std::istream &script, Setup &setup) {
    Setup read = setup;
    read.events.clear();
    read.answers.clear();
    std::string line;
    for (int number = 1; std::getline(script, line); ++number) {
        if (const std::optional<std::string> error = read_line(line, read)) {
            return ScriptError{number, *error};
        }
    }
    std::stable_sort(read.events.begin(), read.events.end(),
                     [](const Event &a, const Event &b) { return a.pass < b.pass; });
    setup = std::move(read);
    return std::nullopt;
}

} // namespace offscreen
