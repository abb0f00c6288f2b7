// SPDX-License-Identifier: MIT
#include "script.h"

#include "record.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <iomanip>
#include <sstream>

namespace amiga {

namespace {

/// The number of frames that were written, one per pass.
int passes = 0;

/// The events and answers that are left.
struct Script {
    std::deque<Event> events;
    std::deque<Answer> answers;
};

[[noreturn]] void refuse_line(const std::string &line) {
    std::fprintf(stderr, "not an event or an answer: %s\n", line.c_str());
    std::abort();
}

/// A character, or a code as 0xNN.
UWORD code(const std::string &word) {
    if (word.size() == 1) {
        return static_cast<unsigned char>(word[0]);
    }
    return static_cast<UWORD>(std::stoul(word, nullptr, 16));
}

Answer read_answer(std::istringstream &words) {
    Answer answer;
    std::string kind;
    words >> kind;
    if (kind == "file") {
        answer.is_file = true;
        words >> answer.drawer >> answer.file;
        answer.drawer = answer.drawer == "-" ? "" : answer.drawer;
    } else if (kind == "mode") {
        answer.is_mode = true;
        words >> std::setbase(0) >> answer.mode_id >> answer.width >> answer.height;
    } else if (kind != "cancel") {
        words.setstate(std::ios::failbit);
    }
    return answer;
}

Event read_event(int pass, std::istringstream &words) {
    Event event;
    event.pass = pass;
    std::string kind;
    std::string word;
    words >> kind;
    if (kind == "move") {
        event.event_class = IDCMP_MOUSEMOVE;
        words >> event.dx >> event.dy;
        return event;
    }
    words >> word;
    if (kind == "button") {
        event.event_class = IDCMP_MOUSEBUTTONS;
        event.code = word == "left" ? SELECTDOWN : MENUDOWN;
    } else if (kind == "key") {
        event.event_class = IDCMP_VANILLAKEY;
        event.code = code(word);
    } else if (kind == "rawkey") {
        event.event_class = IDCMP_RAWKEY;
        event.code = code(word);
    } else {
        words.setstate(std::ios::failbit);
    }
    return event;
}

Script read_script() {
    Script script;
    std::ifstream file(told("AMIGA_INPUT"));
    std::string line;
    while (std::getline(file, line)) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        std::istringstream words(line);
        std::string first;
        words >> first;
        if (first == "answer") {
            script.answers.push_back(read_answer(words));
        } else {
            script.events.push_back(read_event(std::atoi(first.c_str()), words));
        }
        if (words.fail()) {
            refuse_line(line);
        }
    }
    std::stable_sort(script.events.begin(), script.events.end(),
                     [](const Event &a, const Event &b) { return a.pass < b.pass; });
    return script;
}

Script &script() {
    static Script read = read_script();
    return read;
}

} // namespace

void begin_input_of_pass() {
    ++passes;
}

std::optional<Event> next_event() {
    std::deque<Event> &events = script().events;
    if (events.empty() || events.front().pass > passes) {
        return std::nullopt;
    }
    const Event event = events.front();
    events.pop_front();
    return event;
}

Answer next_answer() {
    std::deque<Answer> &answers = script().answers;
    if (answers.empty()) {
        return {};
    }
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

} // namespace amiga
