// SPDX-License-Identifier: MIT
// Finds programs by the folder of this one.
#include "shared/sibling_program.h"

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

std::optional<int> run_program(std::vector<std::string> words, Output output) {
    std::vector<char *> arguments;
    for (std::string &word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (output == Output::hidden) {
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }
    pid_t process = 0;
    const int error = posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        errno = error;
        return std::nullopt;
    }
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
