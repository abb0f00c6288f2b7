// SPDX-License-Identifier: MIT
// asl.library: creates requesters. The host's hooks let the user answer them.
#include "platform/asl.h"

#include "platform/shared/call_record.h"
#include "platform/shared/tags.h"

#include <algorithm>

using namespace host;

APTR AllocAslRequest(ULONG type, const TagItem *tags) {
    note_call("AllocAslRequest", type, tags);
    if (is_refused("AllocAslRequest") || !hooks.can_show_requesters()) {
        return nullptr;
    }
    state.requesters.push_back(std::make_unique<Requester>(type));
    Requester &requester = *state.requesters.back();
    requester.title = reinterpret_cast<const char *>(tag_value(tags, ASLFR_TitleText, tag_pointer("")));
    requester.hold("", reinterpret_cast<const char *>(tag_value(tags, ASLFR_InitialFile, tag_pointer(""))));
    requester.mode_request = hooks.initial_mode();
    return requester.address();
}

BOOL AslRequest(APTR request, const TagItem *tags) {
    note_call("AslRequest", tags);
    Requester &requester = **std::find_if(state.requesters.begin(), state.requesters.end(),
                                          [request](const auto &held) { return held->address() == request; });
    const bool is_confirmed = requester.type == ASL_FileRequest ? hooks.ask_for_file(requester)
                                                                : hooks.ask_for_mode(requester.mode_request);
    return is_confirmed ? TRUE : FALSE;
}

void FreeAslRequest(APTR request) {
    note_call("FreeAslRequest");
    std::erase_if(state.requesters, [request](const auto &held) { return held->address() == request; });
}
