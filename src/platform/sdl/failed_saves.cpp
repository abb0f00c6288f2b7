// SPDX-License-Identifier: MIT
// Every failed save is reported on standard error. If that is no terminal, a requester reports the first one.
#include "platform/sdl/failed_saves.h"

#include "platform/posix/replacing_file.h"
#include "platform/sdl/notice.h"

#include <unistd.h>

namespace host {

namespace {

/// Whether the requester was shown. Once is enough, since later saves usually fail for the same reason.
/// Written by tell_of_failed_save.
bool was_told = false;

} // namespace

void tell_of_failed_save(const std::string &name, const std::string &path, int error) {
    const std::string text = report_failed_save(name, path, error);
    if (!was_told && isatty(STDERR_FILENO) == 0) {
        was_told = true;
        show_notice_over_viewer("Zelvo: settings not saved", text);
    }
}

} // namespace host
