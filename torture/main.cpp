// tormentor --next FILE [OPTION...] FILE...
// tormentor --sum [--every N] [--sample KIND=N,...] RESULTS...
//
// Plays the scenarios of the files again and again, each time with another call of the library's to the outside
// failing, once and for good, and judges each time what has become of it. Behind each one of the scenarios of `--next`
// is played, by turns, with nothing failing any more. Exit code 0 when nothing was found, 1 when something was, 2 when
// the scenarios cannot be played.
//
//   --every N             only each N-th failure of each kind
//   --sample KIND=N,...   of these kinds only each N-th of them
//   --share N/OF          of what is left only each OF-th, beginning with the N-th
//   --scenario PART       only scenarios with that in their title
//   --kind NAME           only calls of that kind
//   --number N            only the N-th call of its kind
//   --tell                tells what happens, call by call
//   --results FILE        writes there what came of each failure, and tells no table. When a failure ends the program,
//                         one that is started with the same words says so and goes on; exit code 0 when all were played
//   --sum                 tells the table of what others have written
#include "player/apart.h"
#include "player/scenario.h"
#include "player/written.h"
#include "simulator/norda/practice.h"
#include "torture/results.h"
#include "torture/trial.h"

#include <atomic>
#include <chrono>
#include <iostream>
#include <map>
#include <random>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace vellumo::torture
{
namespace
{

namespace fs = std::filesystem;

struct Options
{
    std::size_t every = 1;
    std::string sample;
    std::string share;
    std::string next;
    std::string results;
    std::string scenario;
    std::string kind;
    std::size_t number = 0; // 0: all
    bool tells = false;
    bool sums = false;
    std::vector<fs::path> files;
};

Options Read(const std::vector<std::string>& words)
{
    Options options;
    const std::map<std::string, bool*> flags = {{"--tell", &options.tells}, {"--sum", &options.sums}};
    const std::map<std::string, std::size_t*> numbers = {{"--every", &options.every}, {"--number", &options.number}};
    const std::map<std::string, std::string*> texts = {{"--next", &options.next},     {"--scenario", &options.scenario},
                                                       {"--kind", &options.kind},     {"--results", &options.results},
                                                       {"--sample", &options.sample}, {"--share", &options.share}};
    for (std::size_t i = 0; i < words.size(); ++i)
    {
        if (const auto flag = flags.find(words[i]); flag != flags.end())
        {
            *flag->second = true;
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
    if (options.files.empty() || (options.next.empty() && !options.sums) || options.every == 0)
    {
        throw std::invalid_argument("usage: tormentor --next FILE [--every N] [--sample KIND=N,...] [--share N/OF] "
                                    "[--scenario PART] [--kind NAME] [--number N] [--tell] [--results FILE] FILE...\n"
                                    "       tormentor --sum [--every N] [--sample KIND=N,...] RESULTS...");
    }
    return options;
}

Sample SampleOf(const Options& options)
{
    Sample sample;
    sample.fill(options.every);
    std::istringstream words(options.sample);
    for (std::string word; std::getline(words, word, ',');)
    {
        const auto middle = word.find('=');
        const auto kind = FindKind(word.substr(0, middle));
        if (middle == std::string::npos || !kind)
        {
            throw std::invalid_argument("this is no kind and number: " + word);
        }
        sample.at(static_cast<std::size_t>(*kind)) *= std::stoul(word.substr(middle + 1));
    }
    return sample;
}

// Ends the process when a failure does not come to an end.
class Patience
{
public:
    Patience()
    {
        std::thread(
            []
            {
                for (; --secondsLeft > 0; std::this_thread::sleep_for(std::chrono::seconds(1)))
                {
                }
                player::EndProcess(ended);
            })
            .detach();
    }
    static void Renew() { secondsLeft = longest; }

private:
    static constexpr int longest = 120;
    static constexpr int ended = 3;
    static inline std::atomic<int> secondsLeft{longest};
};

class Torture
{
public:
    explicit Torture(Options options)
        : m_options(std::move(options))
        , m_folder(fs::temp_directory_path() / ("vellumo-torture-" + std::to_string(std::random_device()())))
        , m_sample(SampleOf(m_options))
        , m_results(m_options.results)
    {
        if (std::istringstream share(m_options.share); !m_options.share.empty())
        {
            share >> m_share;
            share.ignore(1, '/');
            share >> m_shares;
        }
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
                    Play(scenario, next);
                }
            }
        }
        return !m_options.results.empty() || m_results.Tell(m_sample);
    }

private:
    void Play(const player::Scenario& scenario, const std::vector<player::Scenario>& next)
    {
        const auto start = std::chrono::steady_clock::now();
        Patience::Renew();
        Trial trial(scenario, next, m_model, m_folder / "played", m_options.tells);
        const auto& unhindered = trial.PlayUnhindered();
        for (const auto& difference : unhindered.differences)
        {
            m_results.Find(scenario.title + ", unhindered: " + difference);
        }
        if (!unhindered.differences.empty())
        {
            return;
        }
        const auto failures = Failures(unhindered.calls);
        for (const auto& failure : failures)
        {
            const auto name = scenario.title + ", " + Describe(failure);
            if (!m_results.HasTried(name))
            {
                Patience::Renew();
                m_results.Try(name);
                const auto verdict = trial.Play(failure);
                for (const auto& finding : verdict.findings)
                {
                    m_results.Find(player::Joined({name, finding}, ": "));
                }
                m_results.Played(verdict.seen.failedIn, failure.kind, verdict.seen.failed);
            }
        }
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        std::cout << failures.size() << " failures in " << static_cast<int>(took.count()) << " s: " << scenario.title
                  << std::endl;
    }

    // Once and for good by turns would leave one of them out of every second.
    [[nodiscard]] std::vector<Failure> Failures(const Counts& calls)
    {
        std::vector<Failure> failures;
        for (std::size_t kind = 0; kind < kindCount; ++kind)
        {
            for (const bool forGood : {true, false})
            {
                for (std::size_t number = 1; number <= calls[kind]; ++number)
                {
                    const Failure failure{static_cast<Kind>(kind), number, forGood};
                    if (IsWanted(failure) && m_counted.at(kind)++ % m_sample.at(kind) == 0 &&
                        m_shared++ % m_shares == m_share - 1)
                    {
                        failures.push_back(failure);
                    }
                }
            }
        }
        return failures;
    }

    [[nodiscard]] bool IsWanted(const Failure& failure) const
    {
        return (m_options.kind.empty() || m_options.kind == NameOf(failure.kind)) &&
               (m_options.number == 0 || m_options.number == failure.number);
    }

    static std::string Describe(const Failure& failure)
    {
        return std::string("--kind ") + NameOf(failure.kind) + " --number " + std::to_string(failure.number) +
               (failure.forGood ? " (for good)" : " (once)");
    }

    Options m_options;
    fs::path m_folder;
    fs::path m_model = m_folder / "model";
    Sample m_sample;
    std::size_t m_share = 1;
    std::size_t m_shares = 1;
    Results m_results;
    Patience m_patience;
    Counts m_counted{};
    std::size_t m_shared = 0;
};

bool Sum(const Options& options)
{
    Results results({});
    for (const auto& file : options.files)
    {
        results.Add(file);
    }
    return results.Tell(SampleOf(options));
}

bool Perform(const Options& options)
{
    return options.sums ? Sum(options) : Torture(options).Run();
}

} // namespace
} // namespace vellumo::torture

int main(int count, char** words)
{
    try
    {
        return vellumo::torture::Perform(vellumo::torture::Read({words + 1, words + count})) ? 0 : 1;
    }
    catch (const std::exception& fault)
    {
        std::cerr << "tormentor: " << fault.what() << '\n';
        return 2;
    }
}
