// SPDX-License-Identifier: MIT
// asl.library: requesters that get their answers from the input.
#include <proto/asl.h>

#include "record.h"
#include "script.h"

#include <string>

namespace {

/// A requester of either kind, with the texts that it owns.
struct Requester {
    ULONG type = ASL_FileRequest;
    FileRequester file{};
    ScreenModeRequester mode{};
    std::string drawer_text;
    std::string file_text;

    APTR shown() { return type == ASL_FileRequest ? static_cast<APTR>(&file) : &mode; }
};

/// The requester; there can be only one at a time.
Requester held;

void set_texts(const std::string &drawer, const std::string &file) {
    held.drawer_text = drawer;
    held.file_text = file;
    held.file.fr_Drawer = held.drawer_text.data();
    held.file.fr_File = held.file_text.data();
}

} // namespace

APTR AslIFace::AllocAslRequest(ULONG type, const TagItem *tags) {
    amiga::record("AllocAslRequest %lu", type);
    if (amiga::refuses("AllocAslRequest")) {
        return nullptr;
    }
    amiga::hold("requesters", +1);
    held = {};
    held.type = type;
    held.mode = {0, 320, 256};
    set_texts("", "");
    for (; tags->ti_Tag != TAG_DONE; ++tags) {
        const auto *text = reinterpret_cast<const char *>(tags->ti_Data);
        if (tags->ti_Tag == ASLFR_TitleText) {
            amiga::record("  title \"%s\"", text);
        } else if (tags->ti_Tag == ASLFR_InitialFile) {
            amiga::record("  file \"%s\"", text);
            set_texts("", text);
        } else {
            amiga::record("  tag %lx=%lu", tags->ti_Tag - TAG_USER, tags->ti_Data);
        }
    }
    return held.shown();
}

BOOL AslIFace::AslRequest(APTR requester, const TagItem *) {
    const amiga::Answer answer = amiga::next_answer();
    const bool is_mine = requester == held.shown();
    amiga::record("AslRequest%s", is_mine ? "" : " of no requester");
    if (held.type == ASL_FileRequest && answer.is_file) {
        set_texts(answer.drawer, answer.file);
        return TRUE;
    }
    if (held.type == ASL_ScreenModeRequest && answer.is_mode) {
        held.mode = {answer.mode_id, answer.width, answer.height};
        return TRUE;
    }
    return FALSE;
}

void AslIFace::FreeAslRequest(APTR) {
    amiga::record("FreeAslRequest");
    amiga::hold("requesters", -1);
    held = {};
}
