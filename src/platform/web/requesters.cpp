// SPDX-License-Identifier: MIT
// The page's dialogs. The program sleeps while one is open.
#include "platform/window/requesters.h"

#include "platform/web/page.h"

#include <array>
#include <cstdlib>

namespace host {

bool can_show_requesters() {
    return true;
}

void serve_toolkit() {}

std::optional<std::string> ask_for_file(const FileQuestion &question, const WhileOpen &while_open) {
    // The first pattern is "*" and the suffix of the files that are wanted.
    const std::string suffix = question.filters.front().patterns.front().substr(1);
    char *chosen = page_ask_for_file(question.title.c_str(), question.initial_path.c_str(), suffix.c_str());
    // What was typed for the dialog is no command.
    while_open();
    if (chosen == nullptr) {
        return std::nullopt;
    }
    const std::string path = chosen;
    std::free(chosen);
    return path;
}

std::optional<ModeQuestion> ask_for_mode(const std::vector<ModeName> &, const ModeQuestion &initial,
                                         const WhileOpen &while_open) {
    std::array<int, 3> answer{static_cast<int>(initial.mode_id), initial.width, initial.height};
    const bool is_confirmed = page_ask_for_mode(answer.data());
    while_open();
    if (!is_confirmed) {
        return std::nullopt;
    }
    return ModeQuestion{static_cast<std::uint32_t>(answer[0]), answer[1], answer[2]};
}

} // namespace host
