// SPDX-License-Identifier: MIT
// asl.library: the file requester and the screen-mode requester.
#pragma once

#include "platform/exec.h"

#ifdef __amigaos4__

#include <proto/asl.h>

#else

struct AslIFace;

/// The contents of a file requester after it closed, confirmed or not.
struct FileRequester {
    STRPTR fr_File;
    STRPTR fr_Drawer;
};

/// The contents of a screen-mode requester after it closed, confirmed or not.
struct ScreenModeRequester {
    ULONG sm_DisplayID;
    ULONG sm_DisplayWidth;
    ULONG sm_DisplayHeight;
};

constexpr ULONG ASL_FileRequest = 0;
constexpr ULONG ASL_ScreenModeRequest = 2;

constexpr ULONG ASL_TB = TAG_USER + 0x80000;
constexpr ULONG ASLFR_TitleText = ASL_TB + 1;
constexpr ULONG ASLFR_InitialFile = ASL_TB + 8;
constexpr ULONG ASLFR_DoPatterns = ASL_TB + 46;
constexpr ULONG ASLSM_DoWidth = ASL_TB + 109;
constexpr ULONG ASLSM_DoHeight = ASL_TB + 110;
constexpr ULONG ASLSM_DoOverscanType = ASL_TB + 112;

/// Makes a requester of the given kind, a FileRequester or a ScreenModeRequester; null if it cannot.
APTR AllocAslRequest(ULONG type, const TagItem *tags);

/// Shows a requester until the user closes it; FALSE if they cancelled, and then its contents are unchanged.
BOOL AslRequest(APTR requester, const TagItem *tags);

/// Frees a requester and its texts.
void FreeAslRequest(APTR requester);

#endif
