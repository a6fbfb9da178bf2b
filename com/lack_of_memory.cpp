#include "com/lack_of_memory.h"

#include <windows.h>

#include <cxxabi.h>

#include <atomic>
#include <cstddef>

namespace
{

std::atomic<DWORD> refused{0}; // the thread that gets no memory the next time

} // namespace

// The linker leads each call of malloc to the first one (--wrap), that of the compiler's library, too.
extern "C"
{
    void* __real_malloc(std::size_t size);
    void* __wrap_malloc(std::size_t size);

    void* __wrap_malloc(std::size_t size)
    {
        if (DWORD thread = refused; thread != 0 && thread == GetCurrentThreadId())
        {
            refused = 0;
            return nullptr;
        }
        return __real_malloc(size);
    }
}

namespace vellumo::com
{

void PrepareForLackOfMemory()
{
    static const bool isPrepared = []
    {
        refused = GetCurrentThreadId();
        abi::__cxa_free_exception(abi::__cxa_allocate_exception(1));
        refused = 0;
        return true;
    }();
    static_cast<void>(isPrepared);
}

} // namespace vellumo::com
