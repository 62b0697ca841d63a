#include "FailingAllocation.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace Scrivo::test {

long allocationsBeforeFailure = -1;

namespace {

void* allocate(std::size_t size, std::size_t alignment) {
    if (allocationsBeforeFailure >= 0 && allocationsBeforeFailure-- == 0) {
        throw std::bad_alloc();
    }
    const std::size_t units = (std::max<std::size_t>(size, 1) + alignment - 1) / alignment;
    if (void* memory = std::aligned_alloc(alignment, units * alignment)) {
        return memory;
    }
    throw std::bad_alloc();
}

}  // namespace

}  // namespace Scrivo::test

void* operator new(std::size_t size) {
    return Scrivo::test::allocate(size, alignof(std::max_align_t));
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return Scrivo::test::allocate(size, static_cast<std::size_t>(alignment));
}
// Sorting asks for room in this way, and does without where there is none.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
// NOLINTBEGIN(cppcoreguidelines-no-malloc): these stand below what RAII is made of.
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}
// NOLINTEND(cppcoreguidelines-no-malloc)
