// SPDX-License-Identifier: MIT
// The order of a run: libraries, object file, settings, object, texture, tables, display, passes, statistics.
#include "main_68k/start_up.h"

#include "core/fatal_exit.h"
#include "display/frame_buffers.h"
#include "display/screen.h"
#include "main_68k/command_line.h"
#include "main_68k/frame_loop.h"
#include "main_68k/libraries.h"
#include "main_68k/run_statistics.h"
#include "main_68k/version.h"
#include "main_68k/viewer_state.h"
#include "object/lwo_reader.h"
#include "pipeline/preparation.h"
#include "platform/asl.h"
#include "platform/dos.h"
#include "raster/dots.h"
#include "raster/texture_map.h"
#include "settings/environment_map.h"
#include "settings/settings_file.h"

#include <array>
#include <cstdio>
#include <cstring>

namespace {

/// Longest path that the requester can return, with its terminator.
constexpr std::size_t path_bytes = 1024;
using Path = std::array<char, path_bytes>;

/// Asks for the object's name; if the requester gives none, the program ends.
void ask_for_object(Path &name) {
    const std::array<TagItem, 2> tags{{
        {ASLFR_TitleText, tag_pointer("Select a LightWave Object")},
        {TAG_DONE, 0},
    }};
    auto *requester = static_cast<FileRequester *>(AllocAslRequest(ASL_FileRequest, tags.data()));
    if (requester != nullptr) {
        AslRequest(requester, nullptr);
        std::snprintf(name.data(), name.size(), "%s", requester->fr_Drawer);
        AddPart(name.data(), requester->fr_File, static_cast<ULONG>(name.size()));
        FreeAslRequest(requester);
    }
    if (name[0] == '\0') {
        fatal_exit("No filename given\n");
    }
}

std::FILE *open_object(int argument_count) {
    Path chosen{};
    const char *name = argument_count != 0 ? object_name_from_command_line() : nullptr;
    if (name == nullptr) {
        ask_for_object(chosen);
        name = chosen.data();
    }
    std::FILE *file = open_file(name, "rb");
    if (file == nullptr) {
        fatal_exit("File open error\n");
    }
    return file;
}

/// Asks for the file's size and ignores it: the chunks have their own sizes.
void measure_file(std::FILE *file) {
    (void)std::fseek(file, 0, SEEK_END);
    (void)std::ftell(file);
    (void)std::fseek(file, 0, SEEK_SET);
}

} // namespace

void begin_run(int argument_count) {
    // A copy on the stack keeps the tag in the executable, where the system's version command finds it.
    [[maybe_unused]] volatile char version_on_stack[sizeof version_tag];
    for (std::size_t i = 0; i < sizeof version_tag; ++i) {
        version_on_stack[i] = version_tag[i];
    }

    std::strcpy(viewer.envmap_filename.data(), default_envmap_filename);
    open_libraries();
    std::FILE *object = open_object(argument_count);
    if (load_vars(session_settings) == 0) {
        choose_display_mode();
    }
    measure_file(object);
    read_object(object);
    allocate_envmap();
    load_envmap();
    allocate_dot_image();
    if (myscreen == nullptr) {
        frame_width = viewer.width;
        frame_height = viewer.height;
    }
    prepare_object();
    if (myscreen == nullptr) {
        open_display();
    }
    start_frame_loop();
}

void end_run() {
    print_run_statistics();
    fatal_exit();
}

void start_up(int argument_count) {
    begin_run(argument_count);
    while (!run_pass()) {
    }
    end_run();
}
