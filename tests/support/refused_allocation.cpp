// SPDX-License-Identifier: MIT
// Takes the program's calls of calloc; the linker's --wrap redirects them.
#include "support/refused_allocation.h"

#include <cstddef>

namespace {

int refused_number = 0;
int counted = 0;

} // namespace

extern "C" void *__real_calloc(std::size_t count, std::size_t size);

extern "C" void *__wrap_calloc(std::size_t count, std::size_t size) {
    ++counted;
    return counted == refused_number ? nullptr : __real_calloc(count, size);
}

void refuse_allocation(int number) {
    refused_number = number;
    counted = 0;
}

int allocations_counted() {
    return counted;
}
