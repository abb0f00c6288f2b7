// SPDX-License-Identifier: MIT
// Creates large objects for which there may be no memory.
#pragma once

#include <memory>
#include <new>
#include <utility>

namespace host {

/// A new object made with these arguments; null if there is not enough memory. For objects as large as a
/// screen: the system call that needs one then fails, and the program says so.
template <typename T, typename... Arguments>
std::unique_ptr<T> make_if_there_is_room(Arguments &&...arguments) {
    try {
        return std::make_unique<T>(std::forward<Arguments>(arguments)...);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

} // namespace host
