// SPDX-License-Identifier: MIT
// exec.library, and the start-up code that passes it to the program.
#include <proto/dos.h>
#include <proto/exec.h>

#include "dos.h"
#include "record.h"
#include "script.h"

#include <cstdlib>
#include <cstring>
#include <sstream>

Library *SysBase = nullptr;
ExecIFace *IExec = nullptr;

namespace {

/// The version of every library, unless the test names another.
constexpr UWORD own_version = 54;

/// An open library and its interface, whose methods need only the library's name.
struct OpenedLibrary {
    Library base{};
    Interface interface {};
    std::string name;
};

UWORD version_of(const std::string &name) {
    std::istringstream told(amiga::told("AMIGA_LIBRARIES"));
    std::string word;
    while (told >> word) {
        if (word.starts_with(name + "=")) {
            return static_cast<UWORD>(std::atoi(word.c_str() + name.size() + 1));
        }
    }
    return own_version;
}

OpenedLibrary *owner(Library *library) {
    return reinterpret_cast<OpenedLibrary *>(library);
}

} // namespace

Library *ExecIFace::OpenLibrary(CONST_STRPTR name, ULONG version) {
    const UWORD available = version_of(name);
    amiga::record("OpenLibrary %s %lu", name, version);
    if (available == 0 || available < version) {
        return nullptr;
    }
    amiga::hold("libraries", +1);
    auto *opened = new OpenedLibrary{{}, {}, name};
    opened->base.lib_Version = available;
    return &opened->base;
}

APTR ExecIFace::CloseLibrary(Library *library) {
    amiga::record("CloseLibrary %s", owner(library)->name.c_str());
    amiga::hold("libraries", -1);
    delete owner(library);
    return nullptr;
}

Interface *ExecIFace::GetInterface(Library *library, CONST_STRPTR name, ULONG version, const TagItem *tags) {
    amiga::record("GetInterface %s %s %lu%s", owner(library)->name.c_str(), name, version,
                  tags == nullptr ? "" : " tags");
    if (amiga::refuses("GetInterface")) {
        return nullptr;
    }
    amiga::hold("interfaces", +1);
    Interface &interface = owner(library)->interface;
    interface.Data.LibBase = library;
    return &interface;
}

void ExecIFace::DropInterface(Interface *interface) {
    amiga::record("DropInterface %s", owner(interface->Data.LibBase)->name.c_str());
    amiga::hold("interfaces", -1);
}

Message *ExecIFace::GetMsg(MsgPort *) {
    const std::optional<amiga::Event> event = amiga::next_event();
    if (!event) {
        amiga::record("GetMsg: none");
        return nullptr;
    }
    auto *message = new IntuiMessage{};
    message->Class = event->event_class;
    message->Code = event->code;
    message->MouseX = event->dx;
    message->MouseY = event->dy;
    amiga::record("GetMsg: class 0x%lx code 0x%x move %d %d", message->Class, message->Code, message->MouseX,
                  message->MouseY);
    amiga::hold("messages", +1);
    return &message->ExecMessage;
}

void ExecIFace::ReplyMsg(Message *message) {
    amiga::record("ReplyMsg");
    amiga::hold("messages", -1);
    auto *event = reinterpret_cast<IntuiMessage *>(message);
    // A program that reads the message now gets nonsense.
    std::memset(event, 0xA5, sizeof *event);
    delete event;
}

extern "C" int __real_main(int argc, char **argv);

/// The start-up code: from Workbench the program gets no arguments.
extern "C" int __wrap_main(int argc, char **argv) {
    static ExecIFace exec;
    static DOSIFace dos;
    IExec = &exec;
    IDOS = &dos;
    amiga::record("main %d", amiga::told("AMIGA_WORKBENCH").empty() ? argc : 0);
    amiga::keep_command_line(argc, argv);
    return __real_main(amiga::told("AMIGA_WORKBENCH").empty() ? argc : 0, argv);
}
