// SPDX-License-Identifier: MIT
// Replaces free for the program: the linker's --wrap redirects its calls to here.
#include "support/watched_memory.h"

#include "platform/offscreen/host.h"

#include <array>
#include <cstddef>

namespace {

struct Watched {
    const void *memory;
    const char *name;
};

/// Fixed arrays, so that recording never allocates or frees memory.
std::array<Watched, 32> watched{};
std::size_t watched_count = 0;
struct Freed {
    const char *name;
    std::size_t calls_before;
};
std::array<Freed, 32> freed{};
std::size_t freed_count = 0;

} // namespace

extern "C" void __real_free(void *memory);

extern "C" void __wrap_free(void *memory) {
    for (std::size_t i = 0; memory != nullptr && i < watched_count; ++i) {
        if (watched[i].memory == memory) {
            watched[i].memory = nullptr;
            freed.at(freed_count++) = {watched[i].name, offscreen::calls().size()};
        }
    }
    __real_free(memory);
}

void watch_memory(const void *memory, const char *name) {
    watched.at(watched_count++) = {memory, name};
}

std::string freed_memory() {
    std::string names;
    for (std::size_t i = 0; i < freed_count; ++i) {
        names.append(freed[i].name).append(" ");
    }
    return names;
}

std::string call_before_freeing(const std::string &name) {
    for (std::size_t i = 0; i < freed_count; ++i) {
        if (freed[i].name == name && freed[i].calls_before > 0) {
            return offscreen::calls()[freed[i].calls_before - 1];
        }
    }
    return {};
}
