// Replacements for every global allocation and deallocation function (plain,
// array, nothrow, aligned and sized forms). They forward to malloc, aligned_alloc
// and free, so sanitizers still see and check every block, and count calls on
// the current thread while an AllocationCountingScope is open there.
#include "AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace {

// Thread-local and constant-initialized: reading them needs no allocation and
// no dynamic initialization, which matters inside operator new.
constinit thread_local bool counting = false;
constinit thread_local std::size_t allocationCount = 0;
constinit thread_local std::size_t deallocationCount = 0;

void noteAllocation() noexcept {
    if (counting) {
        ++allocationCount;
    }
}

void noteDeallocation(void* pointer) noexcept {
    if (counting && pointer != nullptr) {
        ++deallocationCount;
    }
}

// The standard's loop: retry through the new-handler until memory comes or
// there is no handler left, then throw.
void* allocate(std::size_t size) {
    noteAllocation();
    if (size == 0) {
        size = 1;  // every call must yield a distinct pointer
    }
    for (;;) {
        if (void* pointer = std::malloc(size)) {
            return pointer;
        }
        std::new_handler handler = std::get_new_handler();
        if (handler == nullptr) {
            throw std::bad_alloc();
        }
        handler();
    }
}

void* allocateAligned(std::size_t size, std::align_val_t alignment) {
    noteAllocation();
    const auto align = static_cast<std::size_t>(alignment);
    // aligned_alloc takes only sizes that are a multiple of the alignment
    // (AddressSanitizer's enforces it), so round up.
    const std::size_t wanted = size == 0 ? 1 : size;
    const std::size_t rounded = (wanted + align - 1) / align * align;
    if (rounded < wanted) {
        throw std::bad_alloc();  // the rounding overflowed
    }
    for (;;) {
        if (void* pointer = std::aligned_alloc(align, rounded)) {
            return pointer;
        }
        std::new_handler handler = std::get_new_handler();
        if (handler == nullptr) {
            throw std::bad_alloc();
        }
        handler();
    }
}

void release(void* pointer) noexcept {
    noteDeallocation(pointer);
    std::free(pointer);
}

}  // namespace

namespace tolvane::testing {

AllocationCountingScope::AllocationCountingScope() noexcept
    : wasCounting_(counting), allocationsAtStart_(allocationCount), deallocationsAtStart_(deallocationCount) {
    counting = true;
}

AllocationCountingScope::~AllocationCountingScope() { counting = wasCounting_; }

std::size_t AllocationCountingScope::allocations() const noexcept { return allocationCount - allocationsAtStart_; }

std::size_t AllocationCountingScope::deallocations() const noexcept {
    return deallocationCount - deallocationsAtStart_;
}

}  // namespace tolvane::testing

// Allocation.

void* operator new(std::size_t size) { return allocate(size); }

void* operator new[](std::size_t size) { return allocate(size); }

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return allocate(size);
    } catch (...) {
        return nullptr;
    }
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return allocate(size);
    } catch (...) {
        return nullptr;
    }
}

void* operator new(std::size_t size, std::align_val_t alignment) { return allocateAligned(size, alignment); }

void* operator new[](std::size_t size, std::align_val_t alignment) { return allocateAligned(size, alignment); }

void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    try {
        return allocateAligned(size, alignment);
    } catch (...) {
        return nullptr;
    }
}

void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    try {
        return allocateAligned(size, alignment);
    } catch (...) {
        return nullptr;
    }
}

// Deallocation. The size and alignment arguments are not needed: free takes
// any block malloc or aligned_alloc returned.

void operator delete(void* pointer) noexcept { release(pointer); }

void operator delete[](void* pointer) noexcept { release(pointer); }

void operator delete(void* pointer, std::size_t) noexcept { release(pointer); }

void operator delete[](void* pointer, std::size_t) noexcept { release(pointer); }

void operator delete(void* pointer, const std::nothrow_t&) noexcept { release(pointer); }

void operator delete[](void* pointer, const std::nothrow_t&) noexcept { release(pointer); }

void operator delete(void* pointer, std::align_val_t) noexcept { release(pointer); }

void operator delete[](void* pointer, std::align_val_t) noexcept { release(pointer); }

void operator delete(void* pointer, std::size_t, std::align_val_t) noexcept { release(pointer); }

void operator delete[](void* pointer, std::size_t, std::align_val_t) noexcept { release(pointer); }

void operator delete(void* pointer, std::align_val_t, const std::nothrow_t&) noexcept { release(pointer); }

void operator delete[](void* pointer, std::align_val_t, const std::nothrow_t&) noexcept { release(pointer); }
