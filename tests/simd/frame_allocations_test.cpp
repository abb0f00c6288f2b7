// SPDX-License-Identifier: MIT
// Tests that drawing a frame allocates no memory.
#include "pipeline/render_frame.h"

#include "core/forms.h"
#include "main_68k/viewer_state.h"
#include "pipeline/sine_table.h"
#include "random_scene.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

/// The number of allocations of any kind, counted in the functions below. Volatile, since compilers assume
/// that no allocation function changes a variable.
volatile long allocations = 0;

} // namespace

// The linker redirects the program's calls of the allocation functions to here.
extern "C" {
void *__real_malloc(std::size_t size);
void *__real_calloc(std::size_t count, std::size_t size);
void *__real_realloc(void *memory, std::size_t size);
void *__real_aligned_alloc(std::size_t alignment, std::size_t size);
int __real_posix_memalign(void **memory, std::size_t alignment, std::size_t size);

void *__wrap_malloc(std::size_t size) {
    allocations = allocations + 1;
    return __real_malloc(size);
}
void *__wrap_calloc(std::size_t count, std::size_t size) {
    allocations = allocations + 1;
    return __real_calloc(count, size);
}
void *__wrap_realloc(void *memory, std::size_t size) {
    allocations = allocations + 1;
    return __real_realloc(memory, size);
}
void *__wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
    allocations = allocations + 1;
    return __real_aligned_alloc(alignment, size);
}
int __wrap_posix_memalign(void **memory, std::size_t alignment, std::size_t size) {
    allocations = allocations + 1;
    return __real_posix_memalign(memory, alignment, size);
}
}

void *operator new(std::size_t size) {
    void *memory = std::malloc(size > 0 ? size : 1);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}
void operator delete(void *memory) noexcept {
    std::free(memory);
}
void operator delete(void *memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

long allocations_of_all_modes() {
    const long before = allocations;
    for (viewer.obj_style = mode_effect; viewer.obj_style <= mode_dots; ++viewer.obj_style) {
        for (viewer.clear_style = 0; viewer.clear_style <= 3; ++viewer.clear_style) {
            render_frame();
        }
    }
    return allocations - before;
}

class FrameAllocations : public testing::TestWithParam<int> {
protected:
    void SetUp() override {
        Random random(3);
        open_noisy_frame({320, 256}, random);
        build_sine_table();
        make_random_object(Shapes::any, 400, random);
        viewer = ViewerState{};
        viewer.dots = 1;
        draws_fast = GetParam() != 0;
        // The first frame may allocate what is chosen or built on first use.
        allocations_of_all_modes();
    }
    void TearDown() override { draws_fast = true; }
};

} // namespace

TEST(AllocationCount, CountsWhatIsTaken) {
    const long before = allocations;
    // Volatile variables keep the compiler from removing the allocations.
    void *volatile zeroed = std::calloc(1, 16);
    int *volatile number = new int(1);
    std::free(zeroed);
    delete number;
    EXPECT_EQ(allocations - before, 2);
}

TEST_P(FrameAllocations, AreNone) {
    EXPECT_EQ(allocations_of_all_modes(), 0);
}

INSTANTIATE_TEST_SUITE_P(PlainAndFast, FrameAllocations, testing::Values(0, 1));
