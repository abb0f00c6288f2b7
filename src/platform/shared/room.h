// SPDX-License-Identifier: MIT
// Making large objects for which memory may have no room.
#pragma once

#include <memory>
#include <new>
#include <utility>

namespace host {

/// A new object of this type made with these arguments; null where memory has no room for it. For what is as
/// large as a screen: a call of the system that needs it is then refused, and the program says so.
template <typename T, typename... Arguments>
std::unique_ptr<T> make_if_there_is_room(Arguments &&...arguments) {
    try {
        return std::make_unique<T>(std::forward<Arguments>(arguments)...);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

} // namespace host
