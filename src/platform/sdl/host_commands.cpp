// SPDX-License-Identifier: MIT
// The commands of the host, each as the steps that it consists of.
#include "platform/sdl/host_commands.h"

#include "platform/posix/object_form.h"
#include "platform/sdl/gtk_words.h"
#include "platform/sdl/key_list.h"
#include "platform/sdl/notice.h"
#include "platform/sdl/object_folder.h"
#include "platform/sdl/saved_picture.h"
#include "platform/shared/state.h"
#include "platform/window/picture_window.h"
#include "platform/window/requested_files.h"
#include "platform/window/requester_answers.h"
#include "platform/window/requesters.h"
#include "platform/window/windowed_host.h"

#include <filesystem>

namespace host {

namespace {

void show_keys() {
    if (can_show_requesters()) {
        make_room_for_requester();
        show_key_list(order_to_requester);
        return_from_requester();
    }
}

void choose_other_object() {
    if (!can_show_requesters()) {
        return;
    }
    // The title of the program's own requester.
    if (const auto path = choose_object("Select a LightWave Object", existing_path(object_path))) {
        open_object(*path);
    }
}

void open_neighbour(int step) {
    const std::string path = neighbour_of(object_path, step);
    if (!path.empty()) {
        open_object(path);
    }
}

} // namespace

void open_object(const std::string &path) {
    const int error = error_of_opening(path);
    if (error == 0 && is_object_file(path)) {
        std::error_code ignored;
        request_next_run(std::filesystem::absolute(path, ignored).string());
        return;
    }
    show_notice_over_viewer("Zelvo: object not opened",
                            path_words(path) + (error != 0 ? ": " + error_words(error)
                                                           : " is no LightWave object (IFF form LWOB)."));
}

void carry_out(HostCommand command) {
    switch (command) {
    case HostCommand::show_keys:
        show_keys();
        break;
    case HostCommand::save_picture:
        save_picture(*state.screens.back());
        break;
    case HostCommand::open_object:
        choose_other_object();
        break;
    case HostCommand::open_next:
        open_neighbour(1);
        break;
    case HostCommand::open_previous:
        open_neighbour(-1);
        break;
    }
}

} // namespace host
