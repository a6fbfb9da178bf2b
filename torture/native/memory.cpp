// The allocator of this program: what the library takes counts, fails when it is due, and must be given back. Before
// each block stands who took it.
#include "torture/outside_call.h"

#include <cstdlib>
#include <new>

namespace
{

using vellumo::torture::Kind;

constexpr std::size_t headSize = alignof(std::max_align_t);
static_assert(headSize >= sizeof(bool));

void* Allocate(std::size_t size) noexcept
{
    const bool ofLibrary = vellumo::torture::IsInLibrary();
    if (ofLibrary && vellumo::torture::FailsInside(Kind::Memory))
    {
        return nullptr;
    }
    auto* const head = static_cast<bool*>(std::malloc(headSize + size));
    if (head == nullptr)
    {
        return nullptr;
    }
    *head = ofLibrary;
    vellumo::torture::Seen().blocks += ofLibrary ? 1 : 0;
    return reinterpret_cast<char*>(head) + headSize;
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

void Free(void* memory) noexcept
{
    if (memory != nullptr)
    {
        auto* const head = reinterpret_cast<bool*>(static_cast<char*>(memory) - headSize);
        vellumo::torture::Seen().blocks -= *head ? 1 : 0;
        std::free(head);
    }
}

} // namespace

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
    Free(memory);
}
void operator delete[](void* memory) noexcept
{
    Free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    Free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    Free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    Free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    Free(memory);
}
