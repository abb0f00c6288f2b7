// SPDX-License-Identifier: MIT
// Memory that the program owns: zeroed arrays from the C heap that free themselves.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

/// Hands an array back to the C heap.
struct Free {
    void operator()(void *memory) const { std::free(memory); }
};

/// An array of plain values from the C heap; null while it is not held.
template <typename T>
using HeapArray = std::unique_ptr<T[], Free>;

/// `count` zeroed elements, null if the heap refuses. Zeroed pages that nothing writes cost no memory on most
/// systems, so that a buffer's size may be generous. A count of 0 gives a valid array of nothing.
template <typename T>
HeapArray<T> allocate_array(std::size_t count) {
    return HeapArray<T>(static_cast<T *>(std::calloc(count > 0 ? count : 1, sizeof(T))));
}
