#pragma once

// Counts the allocations of the calling thread, for contracts such as "allocates nothing".
// Linking the support library replaces the program's operator new. On Linux the shared library's
// allocations go through the replacement as well; a Windows DLL keeps its own operator new, so
// there a zero says nothing about the library and such tests skip.

#include <cstddef>

namespace lmw::test {

/// Allocations (calls of any operator new) made by this thread so far.
[[nodiscard]] std::size_t AllocationCount() noexcept;

/// Whether allocations made inside the shared library are counted on this platform.
[[nodiscard]] bool CountsLibraryAllocations() noexcept;

/// Runs `action` and returns the number of allocations it made on this thread.
template <class Action>
[[nodiscard]] std::size_t AllocationsOf(Action&& action) {
    const std::size_t before = AllocationCount();
    action();
    return AllocationCount() - before;
}

}  // namespace lmw::test

/// Skips the running test where allocations made inside the library are not seen.
#define LMW_SKIP_UNCOUNTED_ALLOCATIONS()        \
    if (!lmw::test::CountsLibraryAllocations()) \
    GTEST_SKIP() << "allocations of the library are not counted on this platform"
