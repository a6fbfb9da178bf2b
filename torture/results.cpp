#include "torture/results.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <numeric>
#include <sstream>
#include <stdexcept>

namespace vellumo::torture
{
namespace
{

constexpr std::size_t kindsAPart = 12; // side by side, all are too wide

// On Windows some calls come or not as the system pleases; so many of a kind, in a hundred, may not have come.
constexpr std::size_t mostMissed = 2;

// What a line is about.
namespace word
{
constexpr std::string_view tried = "try ";
constexpr std::string_view played = "played "; // operation, kind, whether the call came
constexpr std::string_view found = "found ";
} // namespace word

std::vector<std::string> LinesOf(const std::filesystem::path& file)
{
    std::ifstream in(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
    {
        lines.push_back(line);
    }
    return lines;
}

std::size_t Sum(const Counts& counts)
{
    return std::accumulate(counts.begin(), counts.end(), std::size_t(0));
}

void TellRow(const char* name, const Counts& numbers, std::size_t first, std::size_t last)
{
    std::printf("%-28s", name);
    for (auto kind = first; kind < last; ++kind)
    {
        std::printf("%9s", numbers.at(kind) == 0 ? "." : std::to_string(numbers.at(kind)).c_str());
    }
    std::printf("\n");
}

} // namespace

Results::Results(const std::filesystem::path& file)
{
    if (file.empty())
    {
        return;
    }
    const auto lines = LinesOf(file);
    for (const auto& line : lines)
    {
        Take(line);
    }
    m_file.open(file, std::ios::app);
    if (!lines.empty())
    {
        if (!lines.back().starts_with(word::tried))
        {
            throw std::runtime_error("the program ended, and not in a failure");
        }
        Find(lines.back().substr(word::tried.size()) + ": the program ended, or did not come to an end");
    }
}

void Results::Try(const std::string& failure)
{
    Write(std::string(word::tried) + failure);
}

void Results::Played(Operation operation, Kind kind, bool came)
{
    std::ostringstream line;
    line << word::played << static_cast<int>(operation) << ' ' << static_cast<int>(kind) << ' ' << came;
    Write(line.str());
}

void Results::Find(const std::string& finding)
{
    std::cout << "FOUND: " << finding << std::endl;
    Write(std::string(word::found) + finding);
}

void Results::Add(const std::filesystem::path& file)
{
    for (const auto& line : LinesOf(file))
    {
        Take(line);
    }
}

void Results::Write(const std::string& line)
{
    Take(line);
    m_file << line << std::endl;
}

void Results::Take(const std::string& line)
{
    if (line.starts_with(word::tried))
    {
        m_tried.insert(line.substr(word::tried.size()));
    }
    else if (line.starts_with(word::played))
    {
        std::size_t operation = 0;
        std::size_t kind = 0;
        bool came = false;
        std::istringstream(line.substr(word::played.size())) >> operation >> kind >> came;
        ++(came ? m_injected.at(operation) : m_missed).at(kind);
    }
    else
    {
        ++m_findings;
    }
}

bool Results::HasAny(std::size_t operation) const
{
    return Sum(m_injected.at(operation)) != 0;
}

bool Results::Tell(const Sample& sample) const
{
    for (std::size_t first = 0; first < kindCount; first += kindsAPart)
    {
        TellKinds(first, std::min(first + kindsAPart, kindCount), sample);
    }
    std::size_t findings = m_findings;
    for (std::size_t kind = 0; kind < kindCount; ++kind)
    {
        const auto injected = std::accumulate(m_injected.begin(), m_injected.end(), std::size_t(0),
                                              [=](std::size_t sum, const Counts& of) { return sum + of.at(kind); });
        const auto tried = injected + m_missed.at(kind);
        if (m_missed.at(kind) * 100 > tried * mostMissed)
        {
            ++findings;
            std::printf("\nFOUND: of %zu calls, kind %s, %zu did not come when they were to fail", tried,
                        NameOf(static_cast<Kind>(kind)), m_missed.at(kind));
        }
    }
    const auto all = std::accumulate(m_injected.begin(), m_injected.end(), std::size_t(0),
                                     [](std::size_t sum, const Counts& of) { return sum + Sum(of); });
    std::printf("\ntorture: %zu failures injected, %zu calls did not come, %zu findings\n", all, Sum(m_missed),
                findings);
    return findings == 0;
}

void Results::TellKinds(std::size_t first, std::size_t last, const Sample& sample) const
{
    std::printf("\n%-28s", "failures injected");
    for (auto kind = first; kind < last; ++kind)
    {
        std::printf("%9s", NameOf(static_cast<Kind>(kind)));
    }
    std::printf("\n");
    if (Sum(sample) != kindCount)
    {
        TellRow("(of so many one)", sample, first, last);
    }
    for (std::size_t operation = 0; operation < operationCount; ++operation)
    {
        if (HasAny(operation))
        {
            TellRow(NameOf(static_cast<Operation>(operation)), m_injected.at(operation), first, last);
        }
    }
    if (Sum(m_missed) != 0)
    {
        TellRow("(call did not come)", m_missed, first, last);
    }
}

} // namespace vellumo::torture
