// SPDX-License-Identifier: MIT
// dos.library offscreen: the set-up's command line, volumes as folders, and files that stand for others.
#include "platform/dos.h"

#include "platform/offscreen/state.h"
#include "platform/shared/blank_free_names.h"
#include "platform/shared/command_line.h"

using namespace offscreen;

RDArgs *ReadArgs(CONST_STRPTR arguments_template, ArgumentSlot *slots, RDArgs *) {
    record("ReadArgs", {arguments_template});
    const std::optional<std::string> file = host::file_argument(state.setup.command_line);
    if (is_refused("ReadArgs") || !file) {
        return nullptr;
    }
    state.arguments.push_back(std::make_unique<RDArgs>(RDArgs{*file}));
    RDArgs *arguments = state.arguments.back().get();
    slots[0] = reinterpret_cast<ArgumentSlot>(arguments->file.c_str());
    return arguments;
}

void FreeArgs(RDArgs *arguments) {
    record("FreeArgs", {});
    release(state.arguments, arguments);
}

BOOL AddPart(STRPTR drawer, CONST_STRPTR file, ULONG size) {
    record("AddPart", {drawer, file, std::to_string(size)});
    return host::join_path_in_place(drawer, file, size) ? TRUE : FALSE;
}

std::FILE *open_file(const char *name, const char *mode) {
    record("open_file", {name, mode});
    if (is_refused("open_file", name) || host::is_on_missing_volume(state.setup.volumes, name)) {
        return nullptr;
    }
    const auto stand_in = state.setup.stand_ins.find(name);
    const std::string path =
        stand_in != state.setup.stand_ins.end() ? stand_in->second : host::path_of(state.setup.volumes, name);
    std::FILE *file = host::open_plain_file(path, mode, [name = std::string(name), path](int error) {
        host::report_failed_save(name, path, error);
    });
    // Settings that were saved on a desktop may name a texture in its form.
    const bool may_be_written_otherwise = file == nullptr && mode[0] == 'r';
    return may_be_written_otherwise ? host::open_plain_file(host::with_blanks(path), mode) : file;
}
