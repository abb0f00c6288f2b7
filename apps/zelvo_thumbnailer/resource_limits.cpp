// SPDX-License-Identifier: MIT
// Limits by setrlimit and by timers, whose signals end the process.
#include "resource_limits.h"

#include "core/sanitized.h"
#include "failure.h"

#include <csignal>
#include <string_view>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

constexpr rlim_t address_space = rlim_t{256} << 20;

/// In microseconds. The kernel counts it in whole seconds elsewhere, hence a timer.
constexpr suseconds_t processor_time = 800'000;

/// In seconds, for a file system that does not answer. A busy machine must not reach it.
constexpr time_t clock_time = 10;

void set_timer(__itimer_which_t timer, time_t seconds, suseconds_t microseconds) {
    const itimerval once{{0, 0}, {seconds, microseconds}};
    setitimer(timer, &once, nullptr);
}

/// Only calls what a signal handler may.
void give_up(int) {
    constexpr std::string_view why = "zelvo-thumbnailer: the object takes too long\n";
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, why.data(), why.size());
    _exit(exit_no_picture);
}

} // namespace

void limit_resources() {
    // If a file may not grow, the write fails and is reported; the signal would end the process.
    std::signal(SIGXFSZ, SIG_IGN);
    if (is_sanitized) {
        return;
    }
    const rlimit both{address_space, address_space};
    setrlimit(RLIMIT_AS, &both);
    std::signal(SIGPROF, give_up);
    std::signal(SIGALRM, give_up);
    set_timer(ITIMER_PROF, 0, processor_time);
    set_timer(ITIMER_REAL, clock_time, 0);
}

void lift_time_limits() {
    set_timer(ITIMER_PROF, 0, 0);
    set_timer(ITIMER_REAL, 0, 0);
}
