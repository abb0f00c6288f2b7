// SPDX-License-Identifier: MIT
// Finds, checks and creates the settings folders by the XDG base-directory rules.
#include "platform/posix/folders.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace host {

namespace {

/// Only the user may read a folder of settings.
constexpr mode_t private_mode = 0700;

/// An absolute path from the environment. The rules say to ignore relative ones.
std::optional<fs::path> path_variable(const char *name) {
    const char *value = std::getenv(name);
    return value != nullptr && value[0] == '/' ? std::optional<fs::path>(value) : std::nullopt;
}

std::optional<fs::path> home() {
    if (auto path = path_variable("HOME")) {
        return path;
    }
    const passwd *user = getpwuid(getuid());
    return user != nullptr && user->pw_dir[0] == '/' ? std::optional<fs::path>(user->pw_dir) : std::nullopt;
}

enum class Ownership { missing, own, foreign };

/// Foreign is a link, a file, another user's folder, or a folder that others may write to.
Ownership ownership(const fs::path &folder) {
    struct stat status {};
    if (lstat(folder.c_str(), &status) != 0) {
        return Ownership::missing;
    }
    const bool is_own = S_ISDIR(status.st_mode) && status.st_uid == geteuid() && (status.st_mode & 0022) == 0;
    return is_own ? Ownership::own : Ownership::foreign;
}

/// The path of this login's folder, whether it exists or not.
fs::path session_path() {
    if (const auto runtime = path_variable("XDG_RUNTIME_DIR")) {
        if (ownership(*runtime) == Ownership::own) {
            return *runtime / "zelvo";
        }
    }
    std::error_code error;
    const fs::path temporary = fs::temp_directory_path(error);
    return (error ? fs::path("/tmp") : temporary) / ("zelvo-" + std::to_string(geteuid()));
}

/// Copies a folder's files except hidden ones, which are unfinished saves.
void copy_files(const fs::path &from, const fs::path &to) {
    std::error_code error;
    for (fs::directory_iterator at(from, error); !error && at != fs::directory_iterator();
         at.increment(error)) {
        std::error_code of_file;
        if (at->is_regular_file(of_file) && at->path().filename().string().front() != '.') {
            fs::copy_file(at->path(), to / at->path().filename(), of_file);
        }
    }
}

/// Fills the folder before it gets its name, so that another process never sees it half copied. If another
/// process was faster, its folder stays.
void make_session_folder(const fs::path &folder) {
    std::string unfinished = folder.string() + ".XXXXXX";
    if (mkdtemp(unfinished.data()) == nullptr) {
        return;
    }
    if (const auto lasting = lasting_settings_folder()) {
        copy_files(*lasting, unfinished);
    }
    if (std::rename(unfinished.c_str(), folder.c_str()) != 0) {
        std::error_code error;
        fs::remove_all(unfinished, error);
    }
}

} // namespace

std::optional<std::string> lasting_settings_folder() {
    if (const auto config = path_variable("XDG_CONFIG_HOME")) {
        return (*config / "zelvo").string();
    }
    const auto user_home = home();
    return user_home ? std::optional((*user_home / ".config" / "zelvo").string()) : std::nullopt;
}

std::optional<std::string> session_settings_folder() {
    const fs::path folder = session_path();
    if (ownership(folder) == Ownership::missing) {
        make_session_folder(folder);
    }
    if (ownership(folder) != Ownership::own) {
        std::fprintf(stderr, "zelvo: no settings: %s is not a folder of yours alone\n", folder.c_str());
        return std::nullopt;
    }
    return folder.string();
}

bool make_lasting_settings_folder(const std::string &folder) {
    std::error_code error;
    const fs::path path(folder);
    fs::create_directories(path.parent_path(), error);
    if (!error && mkdir(path.c_str(), private_mode) != 0) {
        const int reason = errno;
        if (!fs::is_directory(path, error)) {
            error.assign(reason, std::generic_category());
        }
    }
    errno = error.value();
    return !error;
}

std::string installed_data_path(const std::string &file) {
    std::error_code error;
    const fs::path programs = fs::read_symlink("/proc/self/exe", error).parent_path();
    const fs::path installed = (programs / ZELVO_DATA_FROM_PROGRAM / file).lexically_normal();
    // The build tree, whatever the folders of its installation.
    const fs::path built = (programs / "../share/zelvo" / file).lexically_normal();
    return (fs::exists(built, error) && !fs::exists(installed, error) ? built : installed).string();
}

} // namespace host
