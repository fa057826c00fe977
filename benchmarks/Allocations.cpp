#include "Allocations.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {
thread_local int64_t allocationCount = 0;
}  // namespace

int64_t AllocationCount() { return allocationCount; }

// They take the place of the standard library's for everything that is loaded; the other forms of new and delete end in
// these, but for those of over-aligned types.

void* operator new(std::size_t size) {
    ++allocationCount;
    if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
