#include "tests/support/allocation_counter.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t allocation_count = 0;

void* CountedAllocation(std::size_t size) {
    ++allocation_count;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
    return CountedAllocation(size);
}
void* operator new[](std::size_t size) {
    return CountedAllocation(size);
}
// The library's temporary buffers (stable_sort) ask this way and release by the plain delete below.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocation_count;
    return std::malloc(size == 0 ? 1 : size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace lmw::test {

std::size_t AllocationCount() noexcept {
    return allocation_count;
}

bool CountsLibraryAllocations() noexcept {
    return LMW_ONE_OPERATOR_NEW != 0;
}

}  // namespace lmw::test
