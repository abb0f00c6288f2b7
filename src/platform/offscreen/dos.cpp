// SPDX-License-Identifier: MIT
// Opens files: maps volumes to folders, and replaces the files that the set-up names.
#include "platform/dos.h"

#include "platform/offscreen/state.h"
#include "platform/posix/replacing_file.h"
#include "platform/shared/blank_free_names.h"
#include "platform/shared/call_record.h"

using namespace offscreen;

std::FILE *open_file(const char *name, const char *mode) {
    host::note_call("open_file", name, mode);
    if (host::is_refused("open_file", name)) {
        return nullptr;
    }
    if (state.setup.open) {
        return state.setup.open(name, mode);
    }
    if (host::is_on_missing_volume(state.setup.volumes, name)) {
        return nullptr;
    }
    const auto stand_in = state.setup.stand_ins.find(name);
    const std::string path =
        stand_in != state.setup.stand_ins.end() ? stand_in->second : host::path_of(state.setup.volumes, name);
    std::FILE *file = host::open_plain_file(path, mode, [name = std::string(name), path](int error) {
        host::report_failed_save(name, path, error);
    });
    // Settings that were saved on a desktop may have a texture's name with its blanks replaced.
    const bool may_be_written_otherwise = file == nullptr && mode[0] == 'r';
    return may_be_written_otherwise ? host::open_plain_file(host::with_blanks(path), mode) : file;
}
