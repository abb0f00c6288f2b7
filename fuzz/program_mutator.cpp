// SPDX-License-Identifier: MIT
// Makes libFuzzer change inputs of the program target part by part, so that the lengths stay correct.
#include "chunk_mutator.h"
#include "program_input.h"

#include <algorithm>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t max_size);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t max_size,
                                               unsigned seed) {
    fuzz::ProgramInput input = fuzz::unpack(std::string(data, data + size));
    constexpr std::size_t longest_part = 2000;
    switch (seed % 8) {
    case 0:
        return LLVMFuzzerMutate(data, size, max_size);
    case 1:
        input.settings = fuzz::mutate_text(input.settings, longest_part, LLVMFuzzerMutate);
        break;
    case 2:
    case 3:
        input.object = fuzz::mutate_object(input.object, longest_part, seed / 8, LLVMFuzzerMutate);
        break;
    default:
        input.steps = fuzz::mutate_text(input.steps, longest_part, LLVMFuzzerMutate);
        break;
    }
    const std::string changed = fuzz::pack(input);
    const std::size_t kept = std::min(changed.size(), max_size);
    std::copy_n(changed.begin(), kept, data);
    return kept;
}
