// SPDX-License-Identifier: MIT
// Shows the program's requesters to the user and stores the answers in them.
#include "platform/window/requester_answers.h"

#include "platform/shared/blank_free_names.h"
#include "platform/window/chosen_screen.h"
#include "platform/window/display_modes.h"
#include "platform/window/picture_window.h"
#include "platform/window/recording.h"
#include "platform/window/requested_files.h"
#include "platform/window/requesters.h"
#include "platform/window/windowed_host.h"

#include <string>

namespace host {

namespace {

/// Filters for textures if the requester's initial file is a texture, otherwise for objects.
std::vector<FileFilter> filters_for(const std::string &initial_file) {
    const FileFilter objects{"LightWave objects", {"*.lwo", "*.LWO", "*.lwob", "*.LWOB"}};
    const FileFilter textures{"Textures", {"*.chunky", "*.CHUNKY"}};
    const FileFilter everything{"All files", {"*"}};
    if (initial_file.ends_with(".chunky")) {
        return {textures, everything};
    }
    return {objects, everything};
}

std::optional<std::string> choose_file(const std::string &title, const std::string &initial_path,
                                       const std::vector<FileFilter> &filters) {
    make_room_for_requester();
    std::optional<std::string> chosen =
        ask_for_file({title, initial_path, filters, error_of_opening}, order_to_requester);
    return_from_requester();
    return chosen;
}

/// Lets the user answer, unless that was done before; false if the requester was cancelled.
bool choose_mode(ScreenModeRequester &requester) {
    if (const ChosenScreen chosen = take_chosen_screen(); chosen.is_any()) {
        requester = {
            chosen.mode_id.value_or(requester.sm_DisplayID),
            static_cast<ULONG>(chosen.width.value_or(static_cast<int>(requester.sm_DisplayWidth))),
            static_cast<ULONG>(chosen.height.value_or(static_cast<int>(requester.sm_DisplayHeight)))};
        return true;
    }
    std::vector<ModeName> names;
    for (const DisplayMode &mode : display_modes()) {
        names.push_back({mode.id, mode.name});
    }
    make_room_for_requester();
    const std::optional<ModeQuestion> chosen =
        ask_for_mode(names,
                     {requester.sm_DisplayID, static_cast<int>(requester.sm_DisplayWidth),
                      static_cast<int>(requester.sm_DisplayHeight)},
                     order_to_requester);
    return_from_requester();
    if (!chosen) {
        return false;
    }
    requester = {chosen->mode_id, static_cast<ULONG>(chosen->width), static_cast<ULONG>(chosen->height)};
    return true;
}

} // namespace

std::optional<std::string> choose_object(const std::string &title, const std::string &initial_path) {
    return choose_file(title, initial_path, filters_for(""));
}

bool answer_file_requester(Requester &requester) {
    const std::optional<std::string> chosen =
        choose_file(requester.title, existing_path(requester.file), filters_for(requester.file));
    if (!chosen) {
        record_file_answer(requester, false);
        return false;
    }
    // The drawer ends in "/", since the program adds no "/" to a drawer that ends in ":".
    const std::size_t file_name = chosen->rfind('/') + 1;
    requester.hold(without_blanks(chosen->substr(0, file_name)), without_blanks(chosen->substr(file_name)));
    record_file_answer(requester, true);
    return true;
}

bool answer_mode_requester(ScreenModeRequester &requester) {
    const bool is_confirmed = choose_mode(requester);
    record_mode_answer(requester);
    return is_confirmed;
}

} // namespace host
