// SPDX-License-Identifier: MIT
// Standard error for those who can see it, one requester for the others.
#include "platform/sdl/failed_saves.h"

#include "platform/posix/replacing_file.h"
#include "platform/sdl/picture_window.h"
#include "platform/sdl/requesters.h"
#include "platform/sdl/windowed_host.h"

#include <unistd.h>

namespace desktop {

namespace {

/// Whether the requester was shown; once is enough, since the reason is most often the same. Written here.
bool was_told = false;

} // namespace

void tell_of_failed_save(const std::string &name, const std::string &path, int error) {
    const std::string text = host::report_failed_save(name, path, error);
    if (was_told || isatty(STDERR_FILENO) != 0 || !can_show_requesters()) {
        return;
    }
    was_told = true;
    make_room_for_requester();
    show_notice("Zelvo: settings not saved", text, order_to_requester);
    return_from_requester();
}

} // namespace desktop
