// SPDX-License-Identifier: MIT
// Records the program's system calls as lines of text such as `SetAPen(255)`.
#pragma once

#include "platform/intuition.h"
#include "platform/shared/hooks.h"

#include <concepts>
#include <initializer_list>
#include <string>

namespace host {

/// An argument of a call as text: a number, a string, or a list of tags by their names.
std::string argument_text(std::integral auto number) {
    return std::to_string(number);
}
std::string argument_text(const std::string &text);
std::string argument_text(const TagItem *tags);

/// Adds a line to the record.
void record(const char *call, std::initializer_list<std::string> arguments);

/// Records a call with its arguments, if the host keeps a record.
template <typename... Arguments>
void note_call(const char *call, const Arguments &...arguments) {
    if (state.records_calls) {
        record(call, {argument_text(arguments)...});
    }
}

/// Whether the host refuses a call.
inline bool is_refused(const std::string &call, const std::string &argument = "") {
    return hooks.is_refused(call, argument);
}

} // namespace host
