#pragma once

#include <atomic>
#include <cstdint>

namespace Kestro {

/// The atomic count inside a reference-counted object. It belongs to one object and starts at 0.
class RefCountImpl {
public:
    RefCountImpl() = default;
    RefCountImpl(const RefCountImpl&) = delete;
    RefCountImpl& operator=(const RefCountImpl&) = delete;

    int32_t AddRefImpl() const noexcept { return count_.fetch_add(1, std::memory_order_relaxed) + 1; }
    int32_t GetRefCountImpl() const noexcept { return count_.load(std::memory_order_relaxed); }
    /// The release that reaches 0 sees everything that other threads did through their handles.
    int32_t ReleaseImpl() const noexcept { return count_.fetch_sub(1, std::memory_order_acq_rel) - 1; }

private:
    mutable std::atomic<int32_t> count_{0};
};

}  // namespace Kestro
