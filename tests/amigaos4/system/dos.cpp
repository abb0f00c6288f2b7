// SPDX-License-Identifier: MIT
// dos.library.
#include "dos.h"

#include <proto/dos.h>

#include "record.h"

#include <cstring>

Library *DOSBase = nullptr;
DOSIFace *IDOS = nullptr;

/// A parsed command line, which owns its texts.
struct RDArgs {
    std::string file;
};

namespace {

/// The command line that the program was started with.
int word_count = 0;
char **words = nullptr;

} // namespace

void amiga::keep_command_line(int argc, char **argv) {
    word_count = argc;
    words = argv;
}

RDArgs *DOSIFace::ReadArgs(CONST_STRPTR arguments_template, int32 *array, RDArgs *arguments) {
    amiga::record("ReadArgs %s%s", arguments_template, arguments == nullptr ? "" : " arguments");
    // The template requires exactly one word.
    if (word_count != 2) {
        return nullptr;
    }
    amiga::hold("command lines", +1);
    auto *parsed = new RDArgs{words[1]};
    array[0] = reinterpret_cast<int32>(parsed->file.c_str());
    return parsed;
}

void DOSIFace::FreeArgs(RDArgs *arguments) {
    amiga::record("FreeArgs");
    amiga::hold("command lines", -1);
    arguments->file.assign(arguments->file.size(), '?');
    delete arguments;
}

int32 DOSIFace::AddPart(STRPTR drawer, CONST_STRPTR file, uint32 size) {
    amiga::record("AddPart \"%s\" \"%s\" %lu", drawer, file, size);
    const std::size_t length = std::strlen(drawer);
    const bool needs_slash = length > 0 && drawer[length - 1] != ':' && drawer[length - 1] != '/';
    if (length + (needs_slash ? 1 : 0) + std::strlen(file) + 1 > size) {
        return FALSE;
    }
    std::strcat(drawer, needs_slash ? "/" : "");
    std::strcat(drawer, file);
    return TRUE;
}
