// SPDX-License-Identifier: MIT
// dos.library on a desktop: the shell's words, the settings volumes as folders, and the installed texture.
#include "platform/dos.h"

#include "platform/sdl/failed_saves.h"
#include "platform/sdl/file_names.h"
#include "platform/sdl/state.h"
#include "platform/shared/blank_free_names.h"
#include "platform/shared/command_line.h"
#include "platform/shared/volumes.h"

#include <cerrno>

using namespace desktop;

struct RDArgs {
    std::string file;
};

RDArgs *ReadArgs(CONST_STRPTR, ArgumentSlot *slots, RDArgs *) {
    const std::optional<std::string> file = host::file_argument(state.setup.command_line);
    if (!file) {
        return nullptr;
    }
    auto arguments = std::make_unique<RDArgs>(RDArgs{host::without_blanks(*file)});
    slots[0] = reinterpret_cast<ArgumentSlot>(arguments->file.c_str());
    return arguments.release();
}

void FreeArgs(RDArgs *arguments) {
    const std::unique_ptr<RDArgs> freed(arguments);
}

BOOL AddPart(STRPTR drawer, CONST_STRPTR file, ULONG size) {
    return host::join_path_in_place(drawer, file, size) ? TRUE : FALSE;
}

std::FILE *open_file(const char *name, const char *mode) {
    const bool is_for_saving = mode[0] == 'w';
    const std::optional<std::string> path = path_of_name(name, is_for_saving);
    if (!path) {
        if (is_for_saving) {
            tell_of_failed_save(name, "", errno);
        }
        return nullptr;
    }
    std::FILE *file = host::open_plain_file(*path, mode, [name = std::string(name), path = *path](int error) {
        tell_of_failed_save(name, path, error);
    });
    if (file != nullptr && !is_for_saving && host::is_on_settings_volume(name)) {
        state.settings_path = *path;
    }
    return file;
}
