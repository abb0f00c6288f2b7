// SPDX-License-Identifier: MIT
// A requester with nothing to answer.
#include "platform/sdl/notice.h"

#include "platform/window/picture_window.h"
#include "platform/window/requesters.h"
#include "platform/window/windowed_host.h"

namespace host {

void show_notice_over_viewer(const std::string &title, const std::string &text) {
    if (can_show_requesters()) {
        make_room_for_requester();
        show_notice(title, text, order_to_requester);
        return_from_requester();
    }
}

} // namespace host
