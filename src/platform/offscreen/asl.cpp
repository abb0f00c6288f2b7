// SPDX-License-Identifier: MIT
// asl.library offscreen: requesters that are answered from the script.
#include "platform/asl.h"

#include "platform/offscreen/state.h"
#include "platform/shared/tags.h"

using namespace offscreen;

namespace {

/// Takes the next answer if it is meant for this kind of requester; an answer that is not stays for the next
/// one.
std::optional<Answer> take_answer(bool (*is_for)(const Answer &)) {
    std::deque<Answer> &answers = state.setup.answers;
    if (answers.empty() || !is_for(answers.front())) {
        return std::nullopt;
    }
    Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

APTR make_file_requester(const TagItem *tags) {
    auto requester = std::make_unique<OffscreenFileRequester>();
    requester->file =
        reinterpret_cast<const char *>(host::tag_value(tags, ASLFR_InitialFile, tag_pointer("")));
    requester->fr_File = requester->file.data();
    requester->fr_Drawer = requester->drawer.data();
    state.file_requesters.push_back(std::move(requester));
    return static_cast<FileRequester *>(state.file_requesters.back().get());
}

APTR make_mode_requester() {
    const ModeAnswer &initial = state.setup.default_mode;
    state.mode_requesters.push_back(std::make_unique<ScreenModeRequester>(
        ScreenModeRequester{initial.mode_id, initial.width, initial.height}));
    return state.mode_requesters.back().get();
}

BOOL run_file_requester(OffscreenFileRequester &requester) {
    const std::optional<Answer> answer = take_answer([](const Answer &next) { return !next.mode; });
    if (!answer || !answer->file) {
        return FALSE;
    }
    requester.drawer = answer->file->drawer;
    requester.file = answer->file->name;
    requester.fr_Drawer = requester.drawer.data();
    requester.fr_File = requester.file.data();
    return TRUE;
}

/// Unlike the file requester it has a default to confirm.
BOOL run_mode_requester(ScreenModeRequester &requester) {
    const std::optional<Answer> answer = take_answer([](const Answer &next) { return !next.file; });
    if (answer && answer->mode) {
        requester = {answer->mode->mode_id, answer->mode->width, answer->mode->height};
    }
    return answer && !answer->mode ? FALSE : TRUE;
}

/// The held file requester at this address, null if it is something else.
OffscreenFileRequester *held_file_requester(APTR requester) {
    for (const auto &held : state.file_requesters) {
        if (static_cast<FileRequester *>(held.get()) == requester) {
            return held.get();
        }
    }
    return nullptr;
}

} // namespace

APTR AllocAslRequest(ULONG type, const TagItem *tags) {
    record("AllocAslRequest", {std::to_string(type), tags_as_text(tags)});
    if (is_refused("AllocAslRequest")) {
        return nullptr;
    }
    return type == ASL_FileRequest ? make_file_requester(tags) : make_mode_requester();
}

BOOL AslRequest(APTR requester, const TagItem *tags) {
    record("AslRequest", {tags_as_text(tags)});
    if (OffscreenFileRequester *file_requester = held_file_requester(requester)) {
        return run_file_requester(*file_requester);
    }
    return run_mode_requester(*static_cast<ScreenModeRequester *>(requester));
}

void FreeAslRequest(APTR requester) {
    record("FreeAslRequest", {});
    release(state.file_requesters, held_file_requester(requester));
    release(state.mode_requesters, static_cast<ScreenModeRequester *>(requester));
}
