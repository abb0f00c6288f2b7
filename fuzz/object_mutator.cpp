// SPDX-License-Identifier: MIT
// Makes libFuzzer change inputs of the object target chunk by chunk.
#include "chunk_mutator.h"

#include <algorithm>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t max_size);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t max_size,
                                               unsigned seed) {
    const std::string changed =
        fuzz::mutate_object(std::string(data, data + size), max_size, seed, LLVMFuzzerMutate);
    const std::size_t kept = std::min(changed.size(), max_size);
    std::copy_n(changed.begin(), kept, data);
    return kept;
}
