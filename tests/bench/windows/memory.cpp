// Whether the library keeps anything of an operation, over thousands of them.
#include "platform/windows/forms/common_controls.h"
#include "tests/bench/measure.h"
#include "tests/bench/windows/bare_window.h"
#include "tests/bench/windows/library_run.h"
#include "tests/bench/windows/subjects.h"

#include <array>
#include <cstdio>
#include <memory>

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

// A provider created and released, and a call to SISS refused.
void Operate(LibraryRun& run)
{
    run.CreateAndRelease();
    bool gestito = false;
    static_cast<void>(run.Provider().IdentificaPaziente({}, gestito));
}

double Kilobytes(std::size_t before, std::size_t after)
{
    return (static_cast<double>(after) - static_cast<double>(before)) / 1024;
}

// What the system itself keeps of each window: under Wine the common controls forget to give back the place where a
// label has its font.
double KeptOfBareWindows(LibraryRun& run)
{
    std::unique_ptr<BareWindow> copy;
    run.TheBridge().called = [&] { copy = std::make_unique<BareWindow>(LibraryRun::Window()); };
    Operate(run);
    run.TheBridge().called = nullptr;
    const windows::CommonControls controls;
    const windows::CommonControls::Scope scope(controls);
    std::size_t before = 0;
    for (int window = 1; window <= all; ++window)
    {
        copy->ShowModal([](HWND) {});
        before = window == warm ? BytesInUse() : before;
    }
    return Kilobytes(before, BytesInUse());
}

} // namespace

bool MeasureMemory(LibraryRun& run)
{
    std::size_t before = 0;
    for (int operation = 1; operation <= all; ++operation)
    {
        Operate(run);
        before = operation == warm ? BytesInUse() : before;
    }
    const double grown = Kilobytes(before, BytesInUse());
    const double bare = KeptOfBareWindows(run);
    std::printf("of as many operations are kept %.0f KB, of as many bare windows with their controls %.0f KB\n", grown,
                bare);
    return Report("memory kept between the 100th and the 10000th operation, beyond the windows'", grown - bare, "KB",
                  mostKilobytes);
}

} // namespace vellumo::bench
