// SPDX-License-Identifier: MIT
// Opens and closes the system libraries, each with its interface, through which its functions are called.
#include "main_68k/libraries.h"

#include "core/fatal_exit.h"
#include "platform/asl.h"
#include "platform/graphics.h"
#include "platform/intuition.h"
#include "platform/lowlevel.h"

/// The libraries' bases as the system returns them; null while a library is not open. Written in this file
/// only.
Library *GfxBase = nullptr;
Library *IntuitionBase = nullptr;
Library *LowLevelBase = nullptr;
Library *AslBase = nullptr;

/// The interfaces that the system's inline calls go through; null while a library is not open. Written in
/// this file only.
GraphicsIFace *IGraphics = nullptr;
IntuitionIFace *IIntuition = nullptr;
LowLevelIFace *ILowLevel = nullptr;
AslIFace *IAsl = nullptr;

namespace {

template <typename Iface>
void open_library(const char *name, ULONG version, Library *&base, Iface *&interface, const char *refusal) {
    base = OpenLibrary(name, version);
    if (base != nullptr) {
        interface = reinterpret_cast<Iface *>(GetInterface(base, "main", 1, nullptr));
    }
    if (interface == nullptr) {
        fatal_exit(refusal);
    }
}

template <typename Iface>
void close_library(Library *&base, Iface *&interface) {
    if (interface != nullptr) {
        DropInterface(reinterpret_cast<Interface *>(interface));
        interface = nullptr;
    }
    if (base != nullptr) {
        CloseLibrary(base);
        base = nullptr;
    }
}

} // namespace

void open_libraries() {
    open_library("graphics.library", 39, GfxBase, IGraphics, "Couldn't open Gfx V39\n");
    open_library("intuition.library", 39, IntuitionBase, IIntuition, "Couldn't open Intuition V39\n");
    open_library("lowlevel.library", 39, LowLevelBase, ILowLevel, "Couldn't open LowLevel V39\n");
    open_library("asl.library", 38, AslBase, IAsl, "Couldn't open Asl V38\n");
}

void close_libraries() {
    close_library(AslBase, IAsl);
    close_library(LowLevelBase, ILowLevel);
    close_library(IntuitionBase, IIntuition);
    close_library(GfxBase, IGraphics);
}
