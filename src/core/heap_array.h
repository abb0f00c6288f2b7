// SPDX-License-Identifier: MIT
// Zeroed arrays from the C heap that free themselves: the memory that the program owns.
#pragma once

#include "core/fatal_exit.h"

#include <cstddef>
#include <cstdlib>
#include <memory>

/// Returns an array to the C heap.
struct Free {
    void operator()(void *memory) const { std::free(memory); }
};

/// An array of plain values from the C heap; null while it is not allocated.
template <typename T>
using HeapArray = std::unique_ptr<T[], Free>;

/// `count` zeroed elements, null if the heap refuses. On most systems zeroed pages that nothing writes need
/// no memory, so a buffer may be larger than necessary. A count of 0 gives a valid, empty array.
template <typename T>
HeapArray<T> allocate_array(std::size_t count) {
    return HeapArray<T>(static_cast<T *>(std::calloc(count > 0 ? count : 1, sizeof(T))));
}

/// `count` zeroed elements; if the heap refuses, the program ends with this message.
template <typename T>
HeapArray<T> allocate_or_exit(std::size_t count, const char *refusal) {
    HeapArray<T> array = allocate_array<T>(count);
    if (array == nullptr) {
        fatal_exit(refusal);
    }
    return array;
}
