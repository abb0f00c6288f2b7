// SPDX-License-Identifier: MIT
// Finds programs by the folder of this one.
#include "shared/sibling_program.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

std::string sibling_program(const std::string &name) {
    std::error_code error;
    const auto beside = std::filesystem::read_symlink("/proc/self/exe", error).parent_path() / name;
    return !error && access(beside.c_str(), X_OK) == 0 ? beside.string() : name;
}

namespace {

/// Starts a program. Returns the number of its process, or nothing.
std::optional<pid_t> start(std::vector<std::string> &words, const posix_spawn_file_actions_t *actions) {
    std::vector<char *> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string &word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    pid_t process = 0;
    errno = posix_spawnp(&process, arguments[0], actions, nullptr, arguments.data(), environ);
    return errno == 0 ? std::optional(process) : std::nullopt;
}

int exit_code_of(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

std::optional<int> run_program(std::vector<std::string> words) {
    const std::optional<pid_t> process = start(words, nullptr);
    return process ? std::optional(exit_code_of(*process)) : std::nullopt;
}

std::optional<int> run_program(std::vector<std::string> words, std::string &printed, bool shows_errors) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    if (!shows_errors) {
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    const std::optional<pid_t> process = start(words, &actions);
    const int error = errno;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    std::array<char, 65536> bytes{};
    ssize_t count = 0;
    while (process &&
           ((count = read(ends[0], bytes.data(), bytes.size())) > 0 || (count < 0 && errno == EINTR))) {
        printed.append(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    close(ends[0]);
    errno = error;
    return process ? std::optional(exit_code_of(*process)) : std::nullopt;
}
