// SPDX-License-Identifier: MIT
// intuition.library's calls.
#ifndef PROTO_INTUITION_H
#define PROTO_INTUITION_H

#include <intuition/intuition.h>

struct IntuitionIFace {
    struct InterfaceData Data;
    struct Screen *OpenScreenTagList(const struct NewScreen *screen, const struct TagItem *tags);
    BOOL CloseScreen(struct Screen *screen);
    struct Window *OpenWindowTagList(const struct NewWindow *window, const struct TagItem *tags);
    VOID CloseWindow(struct Window *window);
    struct ScreenBuffer *AllocScreenBuffer(struct Screen *screen, struct BitMap *bitmap, ULONG flags);
    VOID FreeScreenBuffer(struct Screen *screen, struct ScreenBuffer *buffer);
    ULONG ChangeScreenBuffer(struct Screen *screen, struct ScreenBuffer *buffer);
    VOID SetPointer(struct Window *window, UWORD *pointer, WORD height, WORD width, WORD x_offset,
                    WORD y_offset);
};

extern struct Library *IntuitionBase;
extern struct IntuitionIFace *IIntuition;

#ifdef __USE_INLINE__
#define OpenScreenTagList(screen, tags) IIntuition->OpenScreenTagList((screen), (tags))
#define CloseScreen(screen) IIntuition->CloseScreen((screen))
#define OpenWindowTagList(window, tags) IIntuition->OpenWindowTagList((window), (tags))
#define CloseWindow(window) IIntuition->CloseWindow((window))
#define AllocScreenBuffer(screen, bitmap, flags) IIntuition->AllocScreenBuffer((screen), (bitmap), (flags))
#define FreeScreenBuffer(screen, buffer) IIntuition->FreeScreenBuffer((screen), (buffer))
#define ChangeScreenBuffer(screen, buffer) IIntuition->ChangeScreenBuffer((screen), (buffer))
#define SetPointer(window, pointer, height, width, x_offset, y_offset)                                       \
    IIntuition->SetPointer((window), (pointer), (height), (width), (x_offset), (y_offset))
#endif

#endif
