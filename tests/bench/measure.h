// Times two ways of doing the same work in pairs, one right after the other, so that both meet the same machine. What
// counts is the median over the pairs: on a machine that others use, too, the best times are a matter of luck.
#pragma once

#include <functional>
#include <string>

namespace vellumo::bench
{

struct Comparison
{
    std::string what;
    std::string against;
    double ours = 0; // seconds, as bare
    double bare = 0;
    double ratio = 0;
};

// Seconds that the work takes.
[[nodiscard]] double Time(const std::function<void()>& work);

[[nodiscard]] Comparison Compare(std::string what, std::string against, int rounds, const std::function<void()>& ours,
                                 const std::function<void()>& bare);

// The same for work that says itself how many seconds it took, since not all of it counts.
[[nodiscard]] Comparison CompareTimes(std::string what, std::string against, int rounds,
                                      const std::function<double()>& ours, const std::function<double()>& bare);

// Natively only: most memory that the work needs beyond what the process has before it, in bytes. Runs in a process of
// its own.
[[nodiscard]] double PeakMemory(const std::function<void()>& work);

// Prints the ratio and whether it is within the bound; without one it only tells.
[[nodiscard]] bool Report(const Comparison& comparison, double bound);
void Tell(const Comparison& comparison);
[[nodiscard]] bool Report(const std::string& what, double value, const char* unit, double bound);

// Results that are printed nowhere must not be optimised away.
void Use(std::size_t value);

} // namespace vellumo::bench
