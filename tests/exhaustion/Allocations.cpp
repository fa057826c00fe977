#include "Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<int64_t> alive = 0;
int64_t left = 0;  // until the one that fails; 0: none does

void* Allocate(std::size_t size, std::size_t alignment) {
    if (left > 0 && --left == 0) {
        left = -1;
        throw std::bad_alloc();
    }
    void* const memory =
        alignment > __STDCPP_DEFAULT_NEW_ALIGNMENT__ ? std::aligned_alloc(alignment, size) : std::malloc(size);
    if (memory == nullptr) throw std::bad_alloc();
    ++alive;
    return memory;
}

void Free(void* memory) {
    if (memory != nullptr) --alive;
    std::free(memory);
}

}  // namespace

int64_t Allocations::Alive() { return alive; }

void Allocations::FailAt(int64_t n) { left = n; }

bool Allocations::StopFailing() {
    const bool hasFailed = left < 0;
    left = 0;
    return hasFailed;
}

void* operator new(std::size_t size) { return Allocate(size, 1); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    return Allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { Free(memory); }
void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept { Free(memory); }
