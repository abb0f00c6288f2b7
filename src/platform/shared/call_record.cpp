// SPDX-License-Identifier: MIT
// Writes calls and their arguments as text.
#include "platform/shared/call_record.h"

#include <array>
#include <cinttypes>
#include <cstdio>

namespace host {

namespace {

struct TagName {
    ULONG tag;
    const char *name;
    enum { number, text, pointer, words } value;
};

constexpr TagName tag_names[] = {
    {SA_DisplayID, "SA_DisplayID", TagName::number},
    {SA_Overscan, "SA_Overscan", TagName::number},
    {SA_Width, "SA_Width", TagName::number},
    {SA_Height, "SA_Height", TagName::number},
    {SA_Depth, "SA_Depth", TagName::number},
    {SA_AutoScroll, "SA_AutoScroll", TagName::number},
    {SA_Pens, "SA_Pens", TagName::words},
    {SA_Title, "SA_Title", TagName::text},
    {SA_ShowTitle, "SA_ShowTitle", TagName::number},
    {SA_Quiet, "SA_Quiet", TagName::number},
    {SA_Interleaved, "SA_Interleaved", TagName::number},
    {SA_Font, "SA_Font", TagName::pointer},
    {WA_Activate, "WA_Activate", TagName::number},
    {WA_ReportMouse, "WA_ReportMouse", TagName::number},
    {WA_IDCMP, "WA_IDCMP", TagName::number},
    {WA_Borderless, "WA_Borderless", TagName::number},
    {WA_RMBTrap, "WA_RMBTrap", TagName::number},
    {WA_SizeBRight, "WA_SizeBRight", TagName::number},
    {WA_CustomScreen, "WA_CustomScreen", TagName::pointer},
    {WA_NoCareRefresh, "WA_NoCareRefresh", TagName::number},
    {ASLFR_DoPatterns, "ASLFR_DoPatterns", TagName::number},
    {ASLFR_TitleText, "ASLFR_TitleText", TagName::text},
    {ASLFR_InitialFile, "ASLFR_InitialFile", TagName::text},
    {ASLSM_DoWidth, "ASLSM_DoWidth", TagName::number},
    {ASLSM_DoHeight, "ASLSM_DoHeight", TagName::number},
    {ASLSM_DoOverscanType, "ASLSM_DoOverscanType", TagName::number},
};

std::string font_as_text(const TextAttr &font) {
    return std::string(font.ta_Name) + "/" + std::to_string(font.ta_YSize) + "/" +
           std::to_string(font.ta_Style) + "/" + std::to_string(font.ta_Flags);
}

/// A pen array without its end mark.
std::string pens_as_text(const UWORD *pens) {
    std::string text;
    for (; *pens != 0xFFFF; ++pens) {
        text += (text.empty() ? "" : " ") + std::to_string(*pens);
    }
    return text;
}

std::string value_as_text(const TagName &name, TagData data) {
    switch (name.value) {
    case TagName::text:
        return "\"" + std::string(reinterpret_cast<const char *>(data)) + "\"";
    case TagName::words:
        return pens_as_text(reinterpret_cast<const UWORD *>(data));
    case TagName::pointer:
        return name.tag == SA_Font ? font_as_text(*reinterpret_cast<const TextAttr *>(data))
                                   : (data == 0 ? "null" : "set");
    default:
        return std::to_string(data);
    }
}

std::string tag_as_text(const TagItem &item) {
    for (const TagName &name : tag_names) {
        if (name.tag == item.ti_Tag) {
            return std::string(name.name) + "=" + value_as_text(name, item.ti_Data);
        }
    }
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "0x%08" PRIX32 "=%" PRIuPTR, item.ti_Tag, item.ti_Data);
    return text.data();
}

} // namespace

std::string argument_text(const std::string &text) {
    return text;
}

std::string argument_text(const TagItem *tags) {
    std::string text;
    for (; tags != nullptr && tags->ti_Tag != TAG_DONE; ++tags) {
        text += (text.empty() ? "" : ", ") + tag_as_text(*tags);
    }
    return text;
}

void record(const char *call, std::initializer_list<std::string> arguments) {
    std::string line = std::string(call) + "(";
    const char *separator = "";
    for (const std::string &argument : arguments) {
        line += separator + argument;
        separator = ", ";
    }
    state.calls.push_back(line + ")");
}

} // namespace host
