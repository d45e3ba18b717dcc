// Counts the heap allocations made on the current thread while a scope is
// open. AllocationCounter.cpp replaces every global operator new and delete
// with versions that forward to malloc/aligned_alloc and free and tally the
// calls made inside an open scope.
#pragma once

#include <cstddef>

namespace tolvane::testing {

// Opens a counting scope for the current thread; scopes nest. Allocations made
// by other threads, or on this thread outside every scope, are not counted.
// Nothing inside a scope may report test failures (that allocates): record
// results in locals and assert after the scope has closed.
class AllocationCountingScope {
public:
    AllocationCountingScope() noexcept;
    ~AllocationCountingScope();

    AllocationCountingScope(const AllocationCountingScope&) = delete;
    AllocationCountingScope& operator=(const AllocationCountingScope&) = delete;

    // Calls to any operator new (or delete) on this thread since the scope opened.
    std::size_t allocations() const noexcept;
    std::size_t deallocations() const noexcept;

private:
    bool wasCounting_;
    std::size_t allocationsAtStart_;
    std::size_t deallocationsAtStart_;
};

}  // namespace tolvane::testing
