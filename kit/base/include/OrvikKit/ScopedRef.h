// Ownership of one reference-counted platform object (a CoreFoundation
// object on macOS), with the two ways of coming to own it named at the call:
//
// - `adopt(object)` takes over a reference the caller already owns: the
//   result of a function whose name holds "Create" or "Copy". Nothing is
//   retained; the scoper releases it once.
// - `retain(object)` takes a borrowed reference (the "Get" rule, or an
//   argument): the scoper retains it now and releases it once.
//
// Copies retain, moves hand the reference over, destruction and `reset`
// release. A null object is never retained or released.
//
// Portable on purpose: `Policy` supplies `retain(T)` and `release(T)`, which
// are CFRetain and CFRelease on macOS (kit/base/mac/include/OrvikKitMac/CFRef.h) and counting fakes in
// the tests. Not thread-safe beyond what the policy's calls are; one scoper
// is used by one thread at a time.
#pragma once

#include <utility>

namespace orvik {

template <class T, class Policy>
class ScopedRef {
public:
    ScopedRef() noexcept = default;

    // Takes over an owned reference (Create/Copy rule).
    [[nodiscard]] static ScopedRef adopt(T object) noexcept { return ScopedRef(object); }

    // Retains a borrowed reference (Get rule).
    [[nodiscard]] static ScopedRef retain(T object) noexcept {
        if (object != nullptr) Policy::retain(object);
        return ScopedRef(object);
    }

    ScopedRef(const ScopedRef& other) noexcept : object_(other.object_) {
        if (object_ != nullptr) Policy::retain(object_);
    }
    ScopedRef(ScopedRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}

    ScopedRef& operator=(const ScopedRef& other) noexcept {
        ScopedRef copy(other);
        swap(copy);
        return *this;
    }
    ScopedRef& operator=(ScopedRef&& other) noexcept {
        ScopedRef moved(std::move(other));
        swap(moved);
        return *this;
    }

    ~ScopedRef() { reset(); }

    // The object, still owned by the scoper (null when empty).
    T get() const noexcept { return object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    // Releases the object now; the scoper is empty afterwards.
    void reset() noexcept {
        if (object_ != nullptr) Policy::release(std::exchange(object_, nullptr));
    }

    // Hands the owned reference to the caller, who must release it; the
    // scoper is empty afterwards.
    [[nodiscard]] T relinquish() noexcept { return std::exchange(object_, nullptr); }

    void swap(ScopedRef& other) noexcept { std::swap(object_, other.object_); }

private:
    explicit ScopedRef(T object) noexcept : object_(object) {}

    T object_ = nullptr;
};

}  // namespace orvik
