// simulate: plays the lives of prescribing sessions, many thousand a minute, and says which of them broke a rule.
//
//   simulate [--sessions N] [--seed S]   N random sessions (default 20,000), the first one made from S (default 1), the
//                                        next one from S + 1
//   simulate --batches K                 all batches of up to K prescriptions
//   simulate --batch K-I [--show]        batch I of K prescriptions
//   --part I/N                           only the I-th of N parts of these
//   --show                               tells each session in words
//
// Exit code 0 when no rule was broken.
#include "tests/life/life.h"

#include <sys/mman.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <stdexcept>

namespace vellumo::life
{
namespace
{

struct Options
{
    std::uint64_t sessions = 0;
    std::uint64_t seed = 1;
    std::size_t batches = 0; // up to this size
    std::size_t batchSize = 0;
    std::uint64_t batch = 0;
    std::uint64_t part = 1;
    std::uint64_t parts = 1;
    bool shows = false;
};

Options Read(int count, char** arguments)
{
    Options options;
    bool isBatch = false;
    for (int i = 1; i < count; ++i)
    {
        const std::string name = arguments[i];
        const std::string value = i + 1 < count ? arguments[i + 1] : "";
        if (name == "--show")
        {
            options.shows = true;
            continue;
        }
        ++i;
        if (name == "--sessions")
        {
            options.sessions = std::stoull(value);
        }
        else if (name == "--seed")
        {
            options.seed = std::stoull(value);
        }
        else if (name == "--batches")
        {
            options.batches = std::stoul(value);
            isBatch = true;
        }
        else if (name == "--batch")
        {
            options.batchSize = std::stoul(value);
            options.batch = std::stoull(value.substr(value.find('-') + 1));
            isBatch = true;
        }
        else if (name == "--part")
        {
            options.part = std::stoull(value);
            options.parts = std::stoull(value.substr(value.find('/') + 1));
        }
        else
        {
            throw std::invalid_argument("unknown option " + name);
        }
    }
    constexpr std::uint64_t usual = 20000;
    options.sessions = options.sessions == 0 && !isBatch ? usual : options.sessions;
    return options;
}

struct Freed
{
    void operator()(Outside* outside) const { munmap(outside, sizeof(Outside)); }
};

std::unique_ptr<Outside, Freed> MakeOutside()
{
    void* memory = mmap(nullptr, sizeof(Outside), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
    {
        throw std::runtime_error("no shared memory");
    }
    return std::unique_ptr<Outside, Freed>(new (memory) Outside());
}

class Player
{
public:
    explicit Player(bool shows)
        : m_shows(shows)
    {
    }

    void PlayOne(const Plan& plan, const std::string& again)
    {
        Play(plan, *m_outside, m_programs);
        ++m_sessions;
        m_deaths += plan.deathAt != 0 ? 1 : 0;
        m_faults += static_cast<std::uint64_t>(m_outside->faults);
        for (const Round& round : plan.rounds)
        {
            for (const Sending& sending : round.sendings)
            {
                ++m_fates.at(static_cast<std::size_t>(sending.fate));
            }
        }
        for (std::size_t i = 0; i < pointCount; ++i)
        {
            m_failedAt.at(i) += m_outside->failedAt.at(i) ? 1U : 0U;
        }
        const bool broken = !m_outside->violations.IsEmpty();
        m_broken += broken ? 1 : 0;
        constexpr std::uint64_t mostTold = 10;
        if ((broken && m_broken <= mostTold) || m_shows)
        {
            Tell(plan, again);
        }
    }

    [[nodiscard]] bool Sum() const
    {
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
        std::printf("simulate: %llu sessions in %.1f s (%.0f a second), %llu programs ended, %llu faults\n",
                    Number(m_sessions), seconds, static_cast<double>(m_sessions) / seconds, Number(m_deaths),
                    Number(m_faults));
        for (std::size_t i = 0; i < fateCount; ++i)
        {
            std::printf("  %9llu registrations %s\n", Number(m_fates.at(i)), NameOf(static_cast<Fate>(i)));
        }
        for (std::size_t i = 0; i < pointCount; ++i)
        {
            if (m_failedAt.at(i) > 0)
            {
                std::printf("  %9llu sessions with a fault: %s\n", Number(m_failedAt.at(i)),
                            NameOf(static_cast<Point>(i)));
            }
        }
        std::printf("simulate: %llu sessions broke a rule\n", Number(m_broken));
        return m_broken == 0;
    }

private:
    static unsigned long long Number(std::uint64_t number) { return number; }

    static void Print(const char* heading, std::string_view lines)
    {
        if (!lines.empty())
        {
            std::printf("  %s:\n", heading);
        }
        while (!lines.empty())
        {
            const auto line = lines.substr(0, lines.find('\n'));
            std::printf("    %.*s\n", static_cast<int>(line.size()), line.data());
            lines.remove_prefix(std::min(line.size() + 1, lines.size()));
        }
    }

    void Tell(const Plan& plan, const std::string& again) const
    {
        std::printf("%s\n%s", again.c_str(), Describe(plan).c_str());
        for (std::size_t i = 0; i < plan.prescriptions.size(); ++i)
        {
            const StoredRow& row = m_outside->rows.at(i);
            const std::string code(row.code.View());
            const std::string protocol(row.protocol.View());
            std::printf("  row of %s: %s %s%s\n", SubjectOf(plan.prescriptions[i]).c_str(),
                        code.empty() ? "no code" : code.c_str(), protocol.c_str(), row.annullata ? " annullata" : "");
        }
        for (std::size_t i = 0; i < m_outside->givenCount; ++i)
        {
            const GivenCode& given = m_outside->given.at(i);
            const std::string code(given.code.View());
            std::printf("  SISS: %s %s for %s%s\n", code.c_str(),
                        given.atRegistration ? "at registration" : "at the end of the phase",
                        given.prescription < 0
                            ? "nobody"
                            : SubjectOf(plan.prescriptions.at(static_cast<std::size_t>(given.prescription))).c_str(),
                        given.reached ? "" : ", did not arrive");
        }
        Print("journal", m_outside->journal.View());
        Print("traces", m_outside->traces.View());
        Print("refused by the journal", m_outside->refusedByJournal.View());
        Print("refused by the folder", m_outside->refusedByTraces.View());
        Print("VIOLATIONS", m_outside->violations.View());
    }

    bool m_shows;
    std::unique_ptr<Outside, Freed> m_outside = MakeOutside();
    Programs m_programs{VELLUMO_TEMPLATES};
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    std::uint64_t m_sessions = 0;
    std::uint64_t m_deaths = 0;
    std::uint64_t m_faults = 0;
    std::uint64_t m_broken = 0;
    std::array<std::uint64_t, fateCount> m_fates{};
    std::array<std::uint64_t, pointCount> m_failedAt{};
};

void PlayBatch(Player& player, std::size_t size, std::uint64_t number)
{
    player.PlayOne(Batch(size, number), "simulate --batch " + std::to_string(size) + "-" + std::to_string(number));
}

bool Run(const Options& options)
{
    Player player(options.shows);
    for (std::size_t size = 1; size <= options.batches; ++size)
    {
        for (std::uint64_t number = options.part - 1; number < BatchCount(size); number += options.parts)
        {
            PlayBatch(player, size, number);
        }
    }
    if (options.batchSize > 0)
    {
        PlayBatch(player, options.batchSize, options.batch);
    }
    for (std::uint64_t i = options.part - 1; i < options.sessions; i += options.parts)
    {
        const std::uint64_t seed = options.seed + i;
        player.PlayOne(RandomPlan(seed), "make simulate SESSIONS=1 SEED=" + std::to_string(seed));
    }
    return player.Sum();
}

} // namespace
} // namespace vellumo::life

int main(int count, char** arguments)
{
    try
    {
        return vellumo::life::Run(vellumo::life::Read(count, arguments)) ? 0 : 1;
    }
    catch (const std::exception& fault)
    {
        std::fprintf(stderr, "simulate: %s\n", fault.what());
        return 2;
    }
}
