// SPDX-License-Identifier: MIT
// Forks a process per run, because the program ends its process.
#include "object_runs.h"

#include "failure.h"
#include "shared/progress_bar.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Added to the signal's number in the exit code, as shells do.
constexpr int exit_by_signal = 128;

/// The signal that interrupted the tool, or 0, and the process of the current run, or 0. Both are shared with
/// the signal handler.
volatile std::sig_atomic_t interruption = 0;
volatile std::sig_atomic_t running = 0;

void interrupt(int signal) {
    interruption = signal;
    if (running != 0) {
        kill(running, signal);
    }
}

/// Holds interruptions back, or lets them in again.
void hold_interruptions(bool is_held) {
    sigset_t interruptions;
    sigemptyset(&interruptions);
    sigaddset(&interruptions, SIGINT);
    sigaddset(&interruptions, SIGTERM);
    sigprocmask(is_held ? SIG_BLOCK : SIG_UNBLOCK, &interruptions, nullptr);
}

/// Waits for the process and returns its exit code.
int exit_code_of(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : exit_by_signal + WTERMSIG(status);
}

/// Starts the run in a new process and returns its number.
pid_t start(const Options &options, void (*run)(const Options &)) {
    const pid_t process = fork();
    if (process < 0) {
        fail(std::string("cannot start a run: ") + std::strerror(errno));
    }
    if (process == 0) {
        std::signal(SIGINT, SIG_DFL);
        std::signal(SIGTERM, SIG_DFL);
        hold_interruptions(false);
        run(options);
        std::abort();
    }
    return process;
}

} // namespace

void run_all(const std::vector<Options> &runs, void (*run)(const Options &)) {
    std::signal(SIGINT, interrupt);
    std::signal(SIGTERM, interrupt);
    ProgressBar progress(static_cast<int>(runs.size()), "object");
    int first_failure = 0;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        progress.advance_to(static_cast<int>(i) + 1);
        // An interruption must come either before a run or when the handler knows the run's process.
        hold_interruptions(true);
        if (interruption != 0) {
            break;
        }
        running = start(runs[i], run);
        hold_interruptions(false);
        const int code = exit_code_of(running);
        running = 0;
        first_failure = first_failure == 0 ? code : first_failure;
    }
    progress.clear();
    std::exit(interruption != 0 ? exit_by_signal + interruption : first_failure);
}
