#include <cstdlib>
#include <new>

#include "QTBFaultPoint.h"

// Stands in the place of the allocation of the language's library, in the whole program. The forms that promise not to
// raise are used where there is another way without the memory; they never go wrong.

namespace {

void* Allocate(std::size_t size)
{
    if (QTBFaultPoint::StrikesAllocation()) {
        throw std::bad_alloc();
    }
    void* pMemory = std::malloc(size > 0 ? size : 1);
    if (pMemory == nullptr) {
        throw std::bad_alloc();
    }
    return pMemory;
}

void* Allocate(std::size_t size, std::align_val_t alignment)
{
    if (QTBFaultPoint::StrikesAllocation()) {
        throw std::bad_alloc();
    }
    const auto step = static_cast<std::size_t>(alignment);
    void* pMemory = std::aligned_alloc(step, (size + step - 1) / step * step);
    if (pMemory == nullptr) {
        throw std::bad_alloc();
    }
    return pMemory;
}

} // namespace

void* operator new(std::size_t size)
{
    return Allocate(size);
}

void* operator new[](std::size_t size)
{
    return Allocate(size);
}

void* operator new(std::size_t size, std::align_val_t alignment)
{
    return Allocate(size, alignment);
}

void* operator new[](std::size_t size, std::align_val_t alignment)
{
    return Allocate(size, alignment);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return std::malloc(size > 0 ? size : 1);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return std::malloc(size > 0 ? size : 1);
}

void operator delete(void* pMemory) noexcept
{
    std::free(pMemory);
}

void operator delete[](void* pMemory) noexcept
{
    std::free(pMemory);
}

void operator delete(void* pMemory, std::size_t) noexcept
{
    std::free(pMemory);
}

void operator delete[](void* pMemory, std::size_t) noexcept
{
    std::free(pMemory);
}

void operator delete(void* pMemory, std::align_val_t) noexcept
{
    std::free(pMemory);
}

void operator delete[](void* pMemory, std::align_val_t) noexcept
{
    std::free(pMemory);
}

void operator delete(void* pMemory, std::size_t, std::align_val_t) noexcept
{
    std::free(pMemory);
}

void operator delete[](void* pMemory, std::size_t, std::align_val_t) noexcept
{
    std::free(pMemory);
}

void operator delete(void* pMemory, const std::nothrow_t&) noexcept
{
    std::free(pMemory);
}

void operator delete[](void* pMemory, const std::nothrow_t&) noexcept
{
    std::free(pMemory);
}
