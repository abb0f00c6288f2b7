// SPDX-License-Identifier: MIT
#include "record.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <map>

namespace amiga {

namespace {

/// How many objects of each kind the program holds. Never destroyed, since the process's last function reads
/// it.
std::map<std::string, int> &held() {
    static auto *counts = new std::map<std::string, int>;
    return *counts;
}

void record_what_is_held() {
    for (const auto &[kind, count] : held()) {
        if (count != 0) {
            record("still held: %d %s", count, kind.c_str());
        }
    }
}

} // namespace

std::string told(const char *variable) {
    const char *value = std::getenv(variable);
    return value != nullptr ? value : "";
}

void record(const char *format, ...) {
    static std::FILE *file = std::fopen(told("AMIGA_CALLS").c_str(), "w");
    if (file == nullptr) {
        return;
    }
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(file, format, arguments);
    va_end(arguments);
    std::fputc('\n', file);
    std::fflush(file);
}

bool refuses(const char *call) {
    if (told("AMIGA_REFUSE") != call) {
        return false;
    }
    record("%s is refused", call);
    return true;
}

void hold(const char *kind, int change) {
    static const bool is_registered = std::atexit(record_what_is_held) == 0;
    held()[kind] += is_registered ? change : 0;
}

} // namespace amiga
