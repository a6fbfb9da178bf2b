#include "tests/support/scarce_memory.h"

#include <cstdlib>

namespace
{

// Each thread for itself: tests leave others running.
thread_local std::size_t left = 0;
thread_local bool isScarce = false;
thread_local bool ranOut = false;

void* Allocate(std::size_t size) noexcept
{
    if (isScarce && left-- == 0)
    {
        isScarce = false;
        ranOut = true;
        return nullptr;
    }
    return std::malloc(size == 0 ? 1 : size);
}

void* AllocateOrThrow(std::size_t size)
{
    void* const memory = Allocate(size);
    if (memory == nullptr)
    {
        throw std::bad_alloc();
    }
    return memory;
}

} // namespace

namespace vellumo::tests
{

ScarceMemory::ScarceMemory(std::size_t allocations) noexcept
{
    left = allocations;
    ranOut = false;
    isScarce = true;
}

ScarceMemory::~ScarceMemory()
{
    isScarce = false;
}

bool ScarceMemory::RanOut() noexcept
{
    return ranOut;
}

} // namespace vellumo::tests

// All of them, so that no memory is taken by one allocator and given back to another.
void* operator new(std::size_t size)
{
    return AllocateOrThrow(size);
}
void* operator new[](std::size_t size)
{
    return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}
void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}
