// SPDX-License-Identifier: MIT
// Searches a tag list.
#include "platform/shared/tags.h"

namespace host {

TagData tag_value(const TagItem *tags, ULONG tag, TagData otherwise) {
    for (; tags != nullptr && tags->ti_Tag != TAG_DONE; ++tags) {
        if (tags->ti_Tag == tag) {
            return tags->ti_Data;
        }
    }
    return otherwise;
}

} // namespace host
