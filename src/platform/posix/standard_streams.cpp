// SPDX-License-Identifier: MIT
// Fills the closed ones of the first three descriptors.
#include "platform/posix/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

namespace host {

void open_missing_standard_streams() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            // The lowest number that is free is this one, since all below it are open by now.
            (void)open("/dev/null", O_RDWR);
        }
    }
}

} // namespace host
