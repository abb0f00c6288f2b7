// SPDX-License-Identifier: MIT
// Runs one of the built programs as a user would.
#pragma once

#include "support/temporary_files.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// The result of a program.
struct ToolRun {
    /// The exit code, or the negative number of the signal that ended the program.
    int exit_code = 0;
    std::string output;
    std::string errors;
};

/// Where and how a program runs.
struct ToolPlace {
    /// The current directory.
    std::string folder;
    /// TMPDIR.
    std::string temporary_folder;
    /// If set, called with the process's number while it runs.
    std::function<void(pid_t)> meanwhile;
    /// Those of the descriptors 0 to 2 that are closed when the program starts.
    std::vector<int> closed = {};
    /// If set, opened as standard error, such as a terminal. Otherwise `ToolRun::errors` has what is printed.
    std::string error_device = {};
};

/// Runs a built program with these arguments and waits for its end.
inline ToolRun run_tool(const std::string &name, const std::vector<std::string> &arguments,
                        const ToolPlace &place) {
    const TemporaryFiles files;
    const std::string program = std::string(ZELVO_BIN_FOLDER) + "/" + name;
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0) {
        throw std::runtime_error("cannot fork");
    }
    if (child == 0) {
        std::vector<char *> words{const_cast<char *>(program.c_str())};
        for (const std::string &argument : arguments) {
            words.push_back(const_cast<char *>(argument.c_str()));
        }
        words.push_back(nullptr);
        const std::string errors = place.error_device.empty() ? files.path("errors") : place.error_device;
        if (std::freopen(files.path("output").c_str(), "w", stdout) != nullptr &&
            std::freopen(errors.c_str(), "w", stderr) != nullptr && chdir(place.folder.c_str()) == 0 &&
            setenv("TMPDIR", place.temporary_folder.c_str(), 1) == 0) {
            for (const int descriptor : place.closed) {
                close(descriptor);
            }
            execv(program.c_str(), words.data());
        }
        std::_Exit(127);
    }
    if (place.meanwhile) {
        place.meanwhile(child);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), files.read("output"),
            files.read("errors")};
}
