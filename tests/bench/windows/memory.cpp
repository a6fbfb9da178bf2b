// Whether the library keeps anything of an operation, over thousands of them.
#include "tests/bench/measure.h"
#include "tests/bench/windows/library_run.h"
#include "tests/bench/windows/subjects.h"

#include <array>

namespace vellumo::bench
{
namespace
{

constexpr int warm = 100;
constexpr int all = 10000;
constexpr double mostKilobytes = 64;

// In use on all heaps of the process.
std::size_t BytesInUse()
{
    std::array<HANDLE, 64> heaps{};
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    std::size_t bytes = 0;
    for (DWORD i = 0; i < count; ++i)
    {
        HeapLock(heaps.at(i));
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps.at(i), &entry) != FALSE)
        {
            bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
        }
        HeapUnlock(heaps.at(i));
    }
    return bytes;
}

} // namespace

// A provider created and released, and a call to SISS refused, in each operation.
bool MeasureMemory(LibraryRun& run)
{
    std::size_t before = 0;
    for (int operation = 1; operation <= all; ++operation)
    {
        run.CreateAndRelease();
        bool gestito = false;
        static_cast<void>(run.Provider().IdentificaPaziente({}, gestito));
        before = operation == warm ? BytesInUse() : before;
    }
    const auto after = BytesInUse();
    const double grown = (static_cast<double>(after) - static_cast<double>(before)) / 1024;
    return Report("memory kept between the 100th and the 10000th operation", grown, "KB", mostKilobytes);
}

} // namespace vellumo::bench
