// tormentor --next FILE [--every N] [--jobs N] [--scenario PART] [--kind NAME] [--number N] [--tell] FILE...
//
// Plays the scenarios of the files again and again, each time with another call of the library's to the outside
// failing, once and for good, and judges each time what has become of it. Behind each the scenario of `--next` is
// played, with nothing failing any more. `--every` leaves out all but each N-th, the others leave out what is not like
// that, so that one failure can be played again. Exit code 0 when nothing was found, 1 when something was, 2 when the
// scenarios cannot be played.
#include "player/scenario.h"
#include "simulator/norda/practice.h"
#include "torture/apart.h"
#include "torture/trial.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <map>
#include <new>
#include <random>
#include <stdexcept>

namespace vellumo::torture
{
namespace
{

namespace fs = std::filesystem;

constexpr std::size_t mostJobs = 64;

struct Options
{
    std::size_t every = 1;
    std::size_t jobs = 1;
    std::string next;
    std::string scenario;
    std::string kind;
    std::size_t number = 0; // 0: all
    bool tells = false;
    std::vector<fs::path> files;
};

Options Read(const std::vector<std::string>& words)
{
    Options options;
    const std::map<std::string, std::size_t*> numbers = {
        {"--every", &options.every}, {"--jobs", &options.jobs}, {"--number", &options.number}};
    const std::map<std::string, std::string*> texts = {
        {"--next", &options.next}, {"--scenario", &options.scenario}, {"--kind", &options.kind}};
    for (std::size_t i = 0; i < words.size(); ++i)
    {
        if (words[i] == "--tell")
        {
            options.tells = true;
        }
        else if (const auto number = numbers.find(words[i]); number != numbers.end() && i + 1 < words.size())
        {
            *number->second = std::stoul(words[++i]);
        }
        else if (const auto text = texts.find(words[i]); text != texts.end() && i + 1 < words.size())
        {
            *text->second = words[++i];
        }
        else
        {
            options.files.emplace_back(words[i]);
        }
    }
    if (options.files.empty() || options.next.empty() || options.every == 0 || options.jobs == 0 ||
        options.jobs > mostJobs)
    {
        throw std::invalid_argument("usage: tormentor --next FILE [--every N] [--jobs N] [--scenario PART] "
                                    "[--kind NAME] [--number N] [--tell] FILE...");
    }
    return options;
}

// What the processes share.
struct Shared
{
    std::array<std::array<std::atomic<std::size_t>, kindCount>, operationCount> injected;
    std::atomic<std::size_t> findings;
};

class Torture
{
public:
    explicit Torture(Options options)
        : m_options(std::move(options))
        , m_folder(fs::temp_directory_path() / ("vellumo-torture-" + std::to_string(std::random_device()())))
    {
        fs::create_directories(m_folder);
        norda::Practice(m_model).Create();
    }
    ~Torture()
    {
        std::error_code ignored;
        fs::remove_all(m_folder, ignored);
    }
    Torture(const Torture&) = delete;
    Torture& operator=(const Torture&) = delete;

    bool Run()
    {
        const auto next = player::ReadScenarios(m_options.next);
        for (const auto& file : m_options.files)
        {
            for (const auto& scenario : player::ReadScenarios(file))
            {
                if (scenario.title.find(m_options.scenario) != std::string::npos)
                {
                    Play(scenario, next.front());
                }
            }
        }
        Tell();
        return m_shared.findings == 0;
    }

private:
    void Play(const player::Scenario& scenario, const player::Scenario& next)
    {
        const auto start = std::chrono::steady_clock::now();
        Trial trial(scenario, next, m_model, m_folder / "unhindered", m_options.tells);
        const auto& unhindered = trial.PlayUnhindered();
        for (const auto& difference : unhindered.differences)
        {
            Find(scenario, "unhindered", difference);
        }
        if (!unhindered.differences.empty())
        {
            return;
        }
        const auto failures = Failures(unhindered.calls);
        std::map<std::size_t, Trial> trials; // of the jobs, each in its process
        PlayApart(
            m_options.jobs, failures.size(),
            [&](std::size_t job, std::size_t place)
            {
                auto& played = trials.try_emplace(job, trial, m_folder / std::to_string(job)).first->second;
                Judge(scenario, failures[place], played.Play(failures[place]));
            },
            [&](std::size_t place, const std::string& how) { Find(scenario, Describe(failures[place]), how); });
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        std::cout << failures.size() << " failures in " << static_cast<int>(took.count()) << " s: " << scenario.title
                  << std::endl;
    }

    [[nodiscard]] std::vector<Failure> Failures(const Counts& calls)
    {
        std::vector<Failure> failures;
        for (std::size_t kind = 0; kind < kindCount; ++kind)
        {
            for (std::size_t number = 1; number <= calls[kind]; ++number)
            {
                for (const bool forGood : {false, true})
                {
                    const Failure failure{static_cast<Kind>(kind), number, forGood};
                    const bool wanted = (m_options.kind.empty() || m_options.kind == NameOf(failure.kind)) &&
                                        (m_options.number == 0 || m_options.number == number);
                    if (wanted && m_counted++ % m_options.every == 0)
                    {
                        failures.push_back(failure);
                    }
                }
            }
        }
        return failures;
    }

    void Judge(const player::Scenario& scenario, const Failure& failure, const Verdict& verdict)
    {
        for (const auto& finding : verdict.findings)
        {
            Find(scenario, Describe(failure), finding);
        }
        ++m_shared.injected.at(static_cast<std::size_t>(verdict.seen.failedIn))
              .at(static_cast<std::size_t>(failure.kind));
    }

    static std::string Describe(const Failure& failure)
    {
        return std::string("--kind ") + NameOf(failure.kind) + " --number " + std::to_string(failure.number) +
               (failure.forGood ? " (for good)" : " (once)");
    }

    void Find(const player::Scenario& scenario, const std::string& when, const std::string& what)
    {
        ++m_shared.findings;
        std::cout << "FOUND: " << scenario.title << ", " << when << ": " << what << std::endl;
    }

    [[nodiscard]] bool HasAny(std::size_t operation) const
    {
        const auto& of = m_shared.injected.at(operation);
        return std::any_of(of.begin(), of.end(), [](const auto& number) { return number != 0; });
    }

    // In parts, since all kinds side by side are too wide.
    void Tell() const
    {
        constexpr std::size_t kindsAPart = 12;
        std::size_t all = 0;
        for (std::size_t first = 0; first < kindCount; first += kindsAPart)
        {
            const auto last = std::min(first + kindsAPart, kindCount);
            std::printf("\n%-28s", "failures injected");
            for (auto kind = first; kind < last; ++kind)
            {
                std::printf("%9s", NameOf(static_cast<Kind>(kind)));
            }
            std::printf("\n");
            for (std::size_t operation = 0; operation < operationCount; ++operation)
            {
                if (!HasAny(operation))
                {
                    continue;
                }
                std::printf("%-28s", NameOf(static_cast<Operation>(operation)));
                for (auto kind = first; kind < last; ++kind)
                {
                    const std::size_t number = m_shared.injected.at(operation).at(kind);
                    all += number;
                    std::printf("%9s", number == 0 ? "." : std::to_string(number).c_str());
                }
                std::printf("\n");
            }
        }
        std::printf("\ntorture: %zu failures injected, %zu findings\n", all, m_shared.findings.load());
    }

    Options m_options;
    fs::path m_folder;
    fs::path m_model = m_folder / "model";
    Shared& m_shared = *new (Share(sizeof(Shared))) Shared();
    std::size_t m_counted = 0;
};

} // namespace
} // namespace vellumo::torture

int main(int count, char** words)
{
    try
    {
        return vellumo::torture::Torture(vellumo::torture::Read({words + 1, words + count})).Run() ? 0 : 1;
    }
    catch (const std::exception& fault)
    {
        std::cerr << "tormentor: " << fault.what() << '\n';
        return 2;
    }
}
