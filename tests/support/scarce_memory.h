// Memory that runs out at a place of the test's choice, to see that nothing is half done or told wrongly then. It
// counts what C++ allocates in this program; the system's own libraries go on having memory.
#pragma once

#include <cstddef>
#include <new>
#include <utility>

namespace vellumo::tests
{

class ScarceMemory
{
public:
    // The first `allocations` from now on succeed, the one after them does not; then there is memory again.
    explicit ScarceMemory(std::size_t allocations) noexcept;
    ~ScarceMemory();
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;

    [[nodiscard]] static bool RanOut() noexcept; // since the last one began
};

// Runs `work` with memory that runs out at the first allocation, at the second, and so on until it is enough; after
// each that was not enough, `check`. Returns how many were not.
template <class Work, class Check>
std::size_t WithMemoryRunningOut(Work&& work, Check&& check)
{
    for (std::size_t allocations = 0;; ++allocations)
    {
        {
            const ScarceMemory scarce(allocations);
            work();
        }
        if (!ScarceMemory::RanOut())
        {
            return allocations;
        }
        check();
    }
}

} // namespace vellumo::tests
