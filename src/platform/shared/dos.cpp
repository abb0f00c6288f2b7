// SPDX-License-Identifier: MIT
// dos.library: the command line and paths.
#include "platform/dos.h"

#include "platform/shared/call_record.h"
#include "platform/shared/command_line.h"

using namespace host;

RDArgs *ReadArgs(CONST_STRPTR arguments_template, ArgumentSlot *slots, RDArgs *) {
    note_call("ReadArgs", arguments_template);
    const std::optional<std::string> file = file_argument(state.command_line);
    if (is_refused("ReadArgs") || !file) {
        return nullptr;
    }
    state.arguments.push_back(std::make_unique<RDArgs>(RDArgs{*file}));
    RDArgs *arguments = state.arguments.back().get();
    slots[0] = reinterpret_cast<ArgumentSlot>(arguments->file.c_str());
    return arguments;
}

void FreeArgs(RDArgs *arguments) {
    note_call("FreeArgs");
    release(state.arguments, arguments);
}

BOOL AddPart(STRPTR drawer, CONST_STRPTR file, ULONG size) {
    note_call("AddPart", drawer, file, size);
    return join_path_in_place(drawer, file, size) ? TRUE : FALSE;
}
