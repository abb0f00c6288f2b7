// SPDX-License-Identifier: MIT
// asl's structures, with the fields that the program uses, and its tags.
#ifndef LIBRARIES_ASL_H
#define LIBRARIES_ASL_H

#include <exec/exec.h>

#pragma pack(2)

struct FileRequester {
    uint8 fr_Reserved[4];
    STRPTR fr_File;
    STRPTR fr_Drawer;
};

struct ScreenModeRequester {
    uint32 sm_DisplayID;
    uint32 sm_DisplayWidth;
    uint32 sm_DisplayHeight;
};

#pragma pack()

#define ASL_FileRequest 0
#define ASL_ScreenModeRequest 2

#define ASL_Dummy (TAG_USER + 0x80000)
#define ASLFR_TitleText (ASL_Dummy + 1)
#define ASLFR_InitialFile (ASL_Dummy + 8)
#define ASLFR_DoPatterns (ASL_Dummy + 46)
#define ASLSM_DoWidth (ASL_Dummy + 109)
#define ASLSM_DoHeight (ASL_Dummy + 110)
#define ASLSM_DoOverscanType (ASL_Dummy + 112)

#endif
