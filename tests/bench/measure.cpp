#include "tests/bench/measure.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <utility>
#include <vector>

namespace vellumo::bench
{

namespace
{

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

double Time(const std::function<void()>& work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

Comparison Compare(std::string what, std::string against, int rounds, const std::function<void()>& ours,
                   const std::function<void()>& bare)
{
    return CompareTimes(
        std::move(what), std::move(against), rounds, [&] { return Time(ours); }, [&] { return Time(bare); });
}

Comparison CompareTimes(std::string what, std::string against, int rounds, const std::function<double()>& ours,
                        const std::function<double()>& bare)
{
    std::vector<double> oursTimes;
    std::vector<double> bareTimes;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round)
    {
        const bool oursFirst = round % 2 != 0;
        const double first = (oursFirst ? ours : bare)();
        const double second = (oursFirst ? bare : ours)();
        oursTimes.push_back(oursFirst ? first : second);
        bareTimes.push_back(oursFirst ? second : first);
        ratios.push_back(oursTimes.back() / bareTimes.back());
    }
    return {std::move(what), std::move(against), Median(oursTimes), Median(bareTimes), Median(ratios)};
}

bool Report(const Comparison& comparison, double bound)
{
    const bool within = comparison.ratio <= bound;
    std::printf("%-60s %6.2f   at most %4.2f  %s\n    %.3f s; against %s: %.3f s\n", comparison.what.c_str(),
                comparison.ratio, bound, within ? "yes" : "NO", comparison.ours, comparison.against.c_str(),
                comparison.bare);
    std::fflush(stdout);
    return within;
}

void Tell(const Comparison& comparison)
{
    std::printf("%-60s %6.2f\n    %.3f s; against %s: %.3f s\n", comparison.what.c_str(), comparison.ratio,
                comparison.ours, comparison.against.c_str(), comparison.bare);
    std::fflush(stdout);
}

bool Report(const std::string& what, double value, const char* unit, double bound)
{
    const bool within = value <= bound;
    std::printf("%-60s %6.2f %s   at most %4.2f  %s\n", what.c_str(), value, unit, bound, within ? "yes" : "NO");
    std::fflush(stdout);
    return within;
}

void Use(std::size_t value)
{
    static std::atomic<std::size_t> sink;
    sink.store(value, std::memory_order_relaxed);
}

} // namespace vellumo::bench
