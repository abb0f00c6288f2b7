// SPDX-License-Identifier: MIT
// Limits by setrlimit and by timers.
#include "shared/resource_limits.h"

#include "core/sanitized.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/time.h>

namespace {

/// A timer, since setrlimit limits processor time to whole seconds only.
void set_timer(__itimer_which_t timer, double seconds) {
    constexpr double microseconds_per_second = 1e6;
    itimerval once{};
    once.it_value.tv_sec = static_cast<time_t>(seconds);
    const double fraction = seconds - static_cast<double>(once.it_value.tv_sec);
    once.it_value.tv_usec = static_cast<suseconds_t>(fraction * microseconds_per_second);
    setitimer(timer, &once, nullptr);
}

} // namespace

void limit_resources(const ResourceLimits &limits) {
    if (!is_sanitized) {
        const rlimit both{limits.address_space, limits.address_space};
        setrlimit(RLIMIT_AS, &both);
    }
    set_timer(ITIMER_PROF, limits.processor_time);
    set_timer(ITIMER_REAL, limits.clock_time);
}

void lift_time_limits() {
    set_timer(ITIMER_PROF, 0.0);
    set_timer(ITIMER_REAL, 0.0);
}
