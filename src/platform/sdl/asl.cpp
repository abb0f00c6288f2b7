// SPDX-License-Identifier: MIT
// asl.library on a desktop: the requesters' contents before and after the toolkit showed them.
#include "platform/asl.h"

#include "platform/sdl/file_names.h"
#include "platform/sdl/input.h"
#include "platform/sdl/picture_window.h"
#include "platform/sdl/requesters.h"
#include "platform/sdl/state.h"
#include "platform/shared/blank_free_names.h"
#include "platform/shared/tags.h"
#include "platform/shared/volumes.h"

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>

using namespace desktop;

namespace {

struct DesktopRequester {
    explicit DesktopRequester(ULONG requester_type) : type(requester_type) {}
    ULONG type;
    FileRequester file_request{};
    ScreenModeRequester mode_request{};
    std::string title;
    std::string file;
    std::string drawer;
};

/// The requesters that the program holds; each is known to it by the address of its request.
std::vector<std::unique_ptr<DesktopRequester>> requesters;

APTR address(DesktopRequester &requester) {
    return requester.type == ASL_FileRequest ? static_cast<APTR>(&requester.file_request)
                                             : static_cast<APTR>(&requester.mode_request);
}

DesktopRequester *find_requester(APTR request) {
    for (const auto &requester : requesters) {
        if (address(*requester) == request) {
            return requester.get();
        }
    }
    return nullptr;
}

void update_texts(DesktopRequester &requester) {
    requester.file_request = {requester.file.data(), requester.drawer.data()};
}

/// Objects unless the requester's initial file is a texture.
std::vector<FileFilter> filters_for(const std::string &initial_file) {
    const FileFilter objects{"LightWave objects", {"*.lwo", "*.LWO", "*.lwob", "*.LWOB"}};
    const FileFilter textures{"Textures", {"*.chunky", "*.CHUNKY"}};
    const FileFilter everything{"All files", {"*"}};
    if (initial_file.ends_with(".chunky")) {
        return {textures, everything};
    }
    return {objects, everything};
}

/// The absolute path of the file that the program would open under a name, empty if there is none.
std::string existing_path(const std::string &name) {
    const std::optional<std::string> path = name.empty() ? std::nullopt : path_of_name(name, false);
    std::error_code error;
    return path && std::filesystem::exists(*path, error) ? std::filesystem::absolute(*path, error).string()
                                                         : "";
}

/// Why the program would not get a file that it opens.
int error_of_opening(const std::string &path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return errno;
    }
    if (S_ISDIR(status.st_mode)) {
        return EISDIR;
    }
    errno = 0;
    std::FILE *file = host::open_plain_file(path, "rb");
    if (file == nullptr) {
        // What is neither a file nor a device is not even tried.
        return errno != 0 ? errno : ENOTSUP;
    }
    std::fclose(file);
    return 0;
}

BOOL run_file_requester(DesktopRequester &requester) {
    const auto chosen = ask_for_file(
        {requester.title, existing_path(requester.file), filters_for(requester.file), error_of_opening},
        order_to_requester);
    if (!chosen) {
        return FALSE;
    }
    const std::filesystem::path path(*chosen);
    // The drawer ends in "/", since the program joins a file to one that ends in ":" without.
    requester.drawer = host::without_blanks((path.parent_path() / "").string());
    requester.file = host::without_blanks(path.filename().string());
    update_texts(requester);
    return TRUE;
}

BOOL run_mode_requester(DesktopRequester &requester) {
    std::vector<ModeName> names;
    for (const DisplayMode &mode : display_modes()) {
        names.push_back({mode.id, mode.name});
    }
    ScreenModeRequester &request = requester.mode_request;
    const auto chosen = ask_for_mode(names,
                                     {request.sm_DisplayID, static_cast<int>(request.sm_DisplayWidth),
                                      static_cast<int>(request.sm_DisplayHeight)},
                                     order_to_requester);
    if (!chosen) {
        return FALSE;
    }
    request = {chosen->mode_id, static_cast<ULONG>(chosen->width), static_cast<ULONG>(chosen->height)};
    return TRUE;
}

} // namespace

APTR AllocAslRequest(ULONG type, const TagItem *tags) {
    if (!can_show_requesters()) {
        return nullptr;
    }
    requesters.push_back(std::make_unique<DesktopRequester>(type));
    DesktopRequester &requester = *requesters.back();
    requester.title = reinterpret_cast<const char *>(host::tag_value(tags, ASLFR_TitleText, tag_pointer("")));
    requester.file =
        reinterpret_cast<const char *>(host::tag_value(tags, ASLFR_InitialFile, tag_pointer("")));
    requester.mode_request = {state.current.mode_id, state.current.width, state.current.height};
    update_texts(requester);
    return address(requester);
}

BOOL AslRequest(APTR request, const TagItem *) {
    DesktopRequester &requester = *find_requester(request);
    yield_to_requester(false);
    const BOOL is_confirmed =
        requester.type == ASL_FileRequest ? run_file_requester(requester) : run_mode_requester(requester);
    yield_to_requester(true);
    return is_confirmed;
}

void FreeAslRequest(APTR request) {
    std::erase_if(requesters, [request](const auto &held) { return address(*held) == request; });
}
