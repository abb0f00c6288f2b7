// SPDX-License-Identifier: MIT
// Replaces calloc for the program: the linker's --wrap redirects its calls to here.
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
