// SPDX-License-Identifier: MIT
// Tests that the null device replaces descriptors that are closed when a program starts.
#include "platform/posix/standard_streams.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

bool is_null_device(int descriptor) {
    struct stat device {};
    struct stat opened {};
    return stat("/dev/null", &device) == 0 && fstat(descriptor, &opened) == 0 &&
           opened.st_rdev == device.st_rdev && S_ISCHR(opened.st_mode);
}

/// Opens the missing streams in a process whose descriptors of `closed` (bit n for descriptor n) are closed
/// and the others are a pipe's. Bit n of the result says that descriptor n is then the null device. Bit 3
/// means that a further descriptor was opened, bit 4 that one cannot be both read and written.
int null_devices(int closed) {
    const pid_t child = fork();
    if (child == 0) {
        int ends[2];
        if (pipe(ends) != 0) {
            _exit(255);
        }
        for (int descriptor = 0; descriptor < 3; ++descriptor) {
            (closed >> descriptor & 1) != 0 ? close(descriptor) : dup2(ends[0], descriptor);
        }
        close(ends[0]);
        const int free_before = dup(ends[1]);
        close(free_before);
        host::open_missing_standard_streams();
        int found = 0;
        for (int descriptor = 0; descriptor < 3; ++descriptor) {
            const bool is_null = is_null_device(descriptor);
            found |= is_null ? 1 << descriptor : 0;
            found |= is_null && (fcntl(descriptor, F_GETFL) & O_ACCMODE) != O_RDWR ? 16 : 0;
        }
        const int free_afterwards = dup(ends[1]);
        const bool is_wasteful = free_before > 2 && free_afterwards != free_before;
        _exit(found | (is_wasteful ? 8 : 0));
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST(StandardStreams, AreTheNullDeviceIfTheyWereClosedAndOtherwiseUnchanged) {
    for (int closed = 0; closed < 8; ++closed) {
        EXPECT_EQ(null_devices(closed), closed);
    }
}
