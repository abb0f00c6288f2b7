// SPDX-License-Identifier: MIT
// Answers requesters from the script.
#include "platform/offscreen/state.h"

namespace offscreen {

namespace {

/// Takes the next answer if it is for this kind of requester; otherwise leaves it for the next requester.
std::optional<Answer> take_answer(bool (*is_for)(const Answer &)) {
    std::deque<Answer> &answers = state.setup.answers;
    if (answers.empty() || !is_for(answers.front())) {
        return std::nullopt;
    }
    Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

} // namespace

bool answer_file_requester(host::Requester &requester) {
    const std::optional<Answer> answer = take_answer([](const Answer &next) { return !next.mode; });
    if (!answer || !answer->file) {
        return false;
    }
    requester.hold(answer->file->drawer, answer->file->name);
    return true;
}

bool answer_mode_requester(ScreenModeRequester &requester) {
    const std::optional<Answer> answer = take_answer([](const Answer &next) { return !next.file; });
    if (answer && answer->mode) {
        requester = {answer->mode->mode_id, answer->mode->width, answer->mode->height};
    }
    return !answer || answer->mode;
}

} // namespace offscreen
