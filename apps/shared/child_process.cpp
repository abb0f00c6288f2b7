// SPDX-License-Identifier: MIT
// Forks, and reads messages from a pipe. A message is its kind, the number of its bytes, and the bytes.
#include "shared/child_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <new>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace {

constexpr int exit_by_exception = 4;

using Header = std::array<char, 1 + sizeof(std::uint32_t)>;

/// The pipe's end in the child, set when it starts; -1 in other processes.
int pipe_to_parent = -1;

void send_bytes(const char *bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = write(pipe_to_parent, bytes, count);
        if (written < 0 && errno != EINTR) {
            _exit(exit_by_exception);
        }
        bytes += written > 0 ? written : 0;
        count -= written > 0 ? static_cast<std::size_t>(written) : 0;
    }
}

bool receive_bytes(int pipe, char *bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t received = read(pipe, bytes, count);
        if (received == 0 || (received < 0 && errno != EINTR)) {
            return false;
        }
        bytes += received > 0 ? received : 0;
        count -= received > 0 ? static_cast<std::size_t>(received) : 0;
    }
    return true;
}

void receive_messages(int pipe, const OnMessage &on_message) {
    Header header{};
    while (receive_bytes(pipe, header.data(), header.size())) {
        std::uint32_t size = 0;
        std::memcpy(&size, header.data() + 1, sizeof size);
        if (size > INT32_MAX) {
            return;
        }
        std::string bytes(size, '\0');
        if (!receive_bytes(pipe, bytes.data(), bytes.size())) {
            return;
        }
        on_message(header[0], std::move(bytes));
    }
}

/// What the child may do: compute, read files, and write into the pipe.
void confine(const ResourceLimits &limits) {
#ifdef __linux__
    prctl(PR_SET_PDEATHSIG, SIGKILL);
#endif
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nothing, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    setrlimit(RLIMIT_FSIZE, &none);
    limit_resources(limits);
}

[[noreturn]] void work_and_exit(const ResourceLimits &limits, const std::function<void()> &work) {
    confine(limits);
    // Libraries catch what operator new throws, and say something else.
    std::set_new_handler([] { _exit(exit_out_of_memory); });
    try {
        work();
    } catch (...) {
        _exit(exit_by_exception);
    }
    _exit(0);
}

} // namespace

bool ChildEnd::took_too_long() const {
    return signal == SIGPROF || signal == SIGALRM;
}

std::string reason_of(const ChildEnd &end, const std::string &too_long, const std::string &too_much_memory) {
    if (end.took_too_long()) {
        return too_long;
    }
    if (end.exit_code == exit_out_of_memory) {
        return too_much_memory;
    }
    return end.signal != 0 ? std::string("reading it crashed: ") + strsignal(end.signal)
                           : "reading it failed";
}

void send_to_parent(char kind, std::string_view bytes) {
    Header header{kind};
    const auto size = static_cast<std::uint32_t>(bytes.size());
    std::memcpy(header.data() + 1, &size, sizeof size);
    send_bytes(header.data(), header.size());
    send_bytes(bytes.data(), bytes.size());
}

ChildEnd run_in_child(const ResourceLimits &limits, const std::function<void()> &work,
                      const OnMessage &on_message) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return {exit_by_exception, 0};
    }
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        pipe_to_parent = ends[1];
        work_and_exit(limits, work);
    }
    close(ends[1]);
    if (child > 0) {
        receive_messages(ends[0], on_message);
    }
    close(ends[0]);
    int status = 0;
    while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (child < 0) {
        return {exit_by_exception, 0};
    }
    return WIFEXITED(status) ? ChildEnd{WEXITSTATUS(status), 0} : ChildEnd{0, WTERMSIG(status)};
}
