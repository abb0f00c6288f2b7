// SPDX-License-Identifier: MIT
// Opens those of the first three descriptors that are closed.
#include "platform/posix/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

namespace host {

void open_missing_standard_streams() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            // open() returns the lowest free number, which is this one: all lower ones are open by now.
            (void)open("/dev/null", O_RDWR);
        }
    }
}

} // namespace host
