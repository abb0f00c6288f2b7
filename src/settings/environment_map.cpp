// SPDX-License-Identifier: MIT
// Finds the texture file or asks for it, and reads it.
#include "settings/environment_map.h"

#include "core/fatal_exit.h"
#include "main_68k/viewer_state.h"
#include "platform/asl.h"
#include "platform/dos.h"
#include "raster/texture_map.h"

#include <array>
#include <cstdio>
#include <cstring>

namespace {

std::FILE *open_named_envmap() {
    return open_file(viewer.envmap_filename.data(), "rb");
}

void read_envmap(std::FILE *file) {
    (void)std::fread(envmap.get(), 1, envmap_bytes, file);
    std::fclose(file);
}

/// Stores the requester's name. A slash joins drawer and file, unless the drawer is empty or ends in ":" or
/// "/".
void take_name(const FileRequester &requester) {
    const char *drawer = requester.fr_Drawer;
    const std::size_t length = std::strlen(drawer);
    const bool is_joined = length == 0 || drawer[length - 1] == ':' || drawer[length - 1] == '/';
    std::snprintf(viewer.envmap_filename.data(), viewer.envmap_filename.size(), "%s%s%s", drawer,
                  is_joined ? "" : "/", requester.fr_File);
}

} // namespace

void load_envmap() {
    std::FILE *file = open_named_envmap();
    if (file == nullptr) {
        choose_envmap();
        return;
    }
    read_envmap(file);
}

void choose_envmap() {
    const std::array<TagItem, 4> tags{{
        {ASLFR_DoPatterns, TRUE},
        {ASLFR_TitleText, tag_pointer("Select Zelvo_envmap.chunky file")},
        {ASLFR_InitialFile, tag_pointer(default_envmap_filename)},
        {TAG_DONE, 0},
    }};
    auto *requester = static_cast<FileRequester *>(AllocAslRequest(ASL_FileRequest, tags.data()));
    if (requester != nullptr) {
        AslRequest(requester, nullptr);
        take_name(*requester);
        std::printf("envmap filename: %s\n", viewer.envmap_filename.data());
        FreeAslRequest(requester);
    }
    std::FILE *file = open_named_envmap();
    if (file == nullptr) {
        fatal_exit("envmap file open error\n");
    }
    read_envmap(file);
}
