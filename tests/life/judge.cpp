#include "tests/life/judge.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace vellumo::life
{
namespace
{

bool Has(const Lines& lines, std::string_view text)
{
    return !text.empty() && lines.View().find(text) != std::string_view::npos;
}

bool FailedAt(const Outside& outside, std::initializer_list<Point> points)
{
    return std::ranges::any_of(points,
                               [&](Point point) { return outside.failedAt.at(static_cast<std::size_t>(point)); });
}

// The code is in the row of the prescription, or of any when `prescription` is -1.
bool InRow(const World& world, std::string_view code, int prescription)
{
    const auto& all = world.plan.prescriptions;
    for (std::size_t i = 0; i < all.size(); ++i)
    {
        if ((prescription < 0 || prescription == static_cast<int>(i)) && !all[i].rowGoes &&
            WithoutPadding(world.outside.rows.at(i).code.View()) == code)
        {
            return true;
        }
    }
    return false;
}

std::string SubjectOf(const World& world, int prescription)
{
    return prescription < 0 ? "" : SubjectOf(world.plan.prescriptions.at(static_cast<std::size_t>(prescription)));
}

bool InLines(const Lines& lines, std::string_view code, std::string_view subject)
{
    return subject.empty() ? Has(lines, code) : lines.Tell(code, subject);
}

bool IsOpen(const World& world, std::string_view code, std::string_view subject)
{
    const auto holdsIt = [&](const auto& kept)
    {
        return !kept->settled && kept->code.code.find(code) != std::string::npos &&
               (subject.empty() || kept->code.subject == subject);
    };
    return InLines(world.outside.openCodes, code, subject) || std::ranges::any_of(world.kept, holdsIt);
}

// Journal and folder had the line and refused it; or the folder refused the code and the host lost its session; or the
// row had another code, which the host did not let the library read.
bool IsExcused(const World& world, std::string_view code)
{
    const Outside& outside = world.outside;
    const bool lostSession = FailedAt(outside, {Point::SessionFlags, Point::SessionOptions, Point::SessionAdd,
                                                Point::SessionCount, Point::SessionRead}) ||
                             std::ranges::any_of(world.plan.rounds, [](const Round& round) { return !round.closes; });
    return (Has(outside.refusedByJournal, code) && Has(outside.refusedByTraces, code)) ||
           (Has(outside.refusedCodes, code) && lostSession) || FailedAt(outside, {Point::RowGet});
}

} // namespace

void JudgeSettled(World& world, const host::OpenCode& code)
{
    constexpr std::string_view word = "IUP ";
    const std::size_t at = code.code.find(word);
    if (at == std::string::npos)
    {
        return;
    }
    const std::size_t begin = at + word.size();
    const std::string iup = code.code.substr(begin, code.code.find(',', begin) - begin);
    for (std::size_t i = 0; i < world.plan.prescriptions.size(); ++i)
    {
        if (SubjectOf(world, static_cast<int>(i)) == code.subject && InRow(world, iup, static_cast<int>(i)))
        {
            return;
        }
    }
    const auto holdsIt = [&](const auto& kept)
    { return !kept->settled && kept->code.subject == code.subject && kept->code.code.find(iup) != std::string::npos; };
    if (!Has(world.outside.journal, iup) && std::ranges::count_if(world.kept, holdsIt) <= 1)
    {
        world.outside.Violated(iup + " of \"" + code.subject +
                               "\" is settled, but neither in its row nor in the journal");
    }
}

bool IsConfirmed(const World& world, std::string_view subject, std::string_view code)
{
    for (std::size_t i = 0; i < world.plan.prescriptions.size(); ++i)
    {
        const StoredRow& row = world.outside.rows.at(i);
        const std::string iup(WithoutPadding(row.code.View()));
        if (SubjectOf(world, static_cast<int>(i)) == subject && !world.plan.prescriptions[i].rowGoes && !iup.empty() &&
            !row.protocol.IsEmpty() && (code == "IUP " + iup || code.starts_with("IUP " + iup + ",")))
        {
            return true;
        }
    }
    return false;
}

void JudgeCodes(World& world, bool started)
{
    Outside& outside = world.outside;
    for (std::size_t i = 0; i < outside.givenCount; ++i)
    {
        const GivenCode& given = outside.given.at(i);
        const auto code = given.code.View();
        if (!given.reached || (!given.atRegistration && outside.IsTold(code)))
        {
            continue; // the latter is looked for where registration gave it
        }
        const int owner = given.atRegistration ? given.prescription : -1;
        const std::string subject = SubjectOf(world, owner);
        const bool isFound = InRow(world, code, owner) || InLines(outside.journal, code, subject) ||
                             InLines(outside.traces, code, subject) || (!started && IsOpen(world, code, subject));
        if (!isFound && !IsExcused(world, code))
        {
            outside.Violated(std::string(code) + " of \"" + (subject.empty() ? "unknown" : subject) + "\" is lost" +
                             (started ? " at the next start" : ""));
        }
    }
    if (started && (!outside.openCodes.IsEmpty() ||
                    std::ranges::any_of(world.kept, [](const auto& kept) { return !kept->settled; })))
    {
        outside.Violated("a code is still open after the next start");
    }
}

void JudgeLines(World& world)
{
    constexpr std::string_view folderLine = "DA CONTROLLARE: la cartella";
    const Outside& outside = world.outside;
    std::string toJournal;
    int folderLines = 0;
    std::string_view left = outside.offeredToJournal.View();
    while (!left.empty())
    {
        const auto line = left.substr(0, left.find('\n') + 1);
        left.remove_prefix(line.size());
        const bool isOfFolder = line.starts_with(folderLine);
        folderLines += isOfFolder ? 1 : 0;
        toJournal += isOfFolder ? "" : line;
        if (line.find("0300A") != std::string_view::npos && !line.starts_with("DA CONTROLLARE: "))
        {
            world.outside.Violated("a line with a code does not say that somebody must look: " + std::string(line));
        }
    }
    if (toJournal != outside.offeredToTraces.View())
    {
        world.outside.Violated("journal and folder were not told the same lines");
    }
    const bool refused = !outside.refusedByTraces.IsEmpty() || !outside.refusedCodes.IsEmpty();
    if ((folderLines > 0) != refused || folderLines > world.providers)
    {
        world.outside.Violated("the folder refused something, and the journal was told " + std::to_string(folderLines) +
                               " times");
    }
}

void JudgeBrokenSession(World& world)
{
    if (!world.sessionFaulted)
    {
        return;
    }
    for (const std::string& code : world.readCodes)
    {
        const bool isStored = InRow(world, code, -1) || Has(world.outside.journal, code);
        if (!code.empty() && !isStored && !Has(world.outside.refusedByJournal, code))
        {
            world.outside.Violated("no journal line for " + code + ", which was read before the session faulted");
        }
    }
}

// --- The results of the end of the phase ---

void JudgeResults(World& world)
{
    const auto* results = world.network.Results();
    std::array<int, 5> sent{};
    for (const auto& registered : world.network.All())
    {
        ++sent.at(registered.prescription);
    }
    if (results == nullptr || std::ranges::max(sent) > 1)
    {
        return; // the row of a form that was registered twice shows the later result
    }
    Outside& outside = world.outside;
    for (const auto& result : *results)
    {
        if (!result.isOk || result.code.empty())
        {
            continue;
        }
        const bool isStored =
            std::ranges::any_of(outside.rows, [&](const StoredRow& row)
                                { return row.code.View() == result.code && row.protocol.View() == result.protocol; });
        const bool isTold = outside.journal.Tell(result.code, result.protocol) ||
                            outside.traces.Tell(result.code, result.protocol) || IsOpen(world, result.protocol, "");
        if (!isStored && !isTold && !IsExcused(world, result.code))
        {
            outside.Violated("protocol " + result.protocol + " of " + result.code + " is lost");
        }
    }
}

namespace
{

using Registered = Network::Registered;
using Result = Network::Result;

bool HasReply(Fate fate)
{
    return fate != Fate::WithoutOutcome;
}

bool IsRefused(Fate fate)
{
    return fate == Fate::Refused || fate == Fate::RefusedWithCode || fate == Fate::RefusedByList ||
           fate == Fate::LostBefore || fate == Fate::LostAfter;
}

// What the reply to its registration said, "" for none.
std::string ToldCode(const Registered& registered)
{
    return HasReply(registered.fate) && registered.fate != Fate::LostAfter ? registered.code : "";
}

// What a human with all replies before him, and nothing else, can say of the results of one close.
class Truth
{
public:
    Truth(World& world, const Closing& closing)
        : m_world(world)
        , m_all(world.network.All())
        , m_cancels(closing.button != Button::PrintWithoutIup)
    {
        for (const std::int32_t kind : {1, 2})
        {
            for (std::size_t i = 0; i < m_all.size(); ++i)
            {
                if (HasReply(m_all[i].fate) && !(m_cancels && IsRefused(m_all[i].fate)) &&
                    world.plan.prescriptions.at(m_all[i].prescription).kind == kind)
                {
                    m_collected.push_back(i);
                }
            }
        }
    }

    // A form that was registered twice, or a code that was given twice, makes it a matter of luck.
    [[nodiscard]] bool IsClear() const
    {
        for (std::size_t i = 0; i < m_all.size(); ++i)
        {
            for (std::size_t j = 0; j < i; ++j)
            {
                if (m_all[i].prescription == m_all[j].prescription ||
                    (!m_all[i].code.empty() && m_all[i].code == m_all[j].code))
                {
                    return false;
                }
            }
        }
        return true;
    }

    void JudgeReview() const
    {
        for (const Registered& registered : m_all)
        {
            const StoredRow& row = m_world.outside.rows.at(registered.prescription);
            const bool cancelled = m_cancels && IsRefused(registered.fate);
            if (HasReply(registered.fate) && !GoesRow(registered) && !IsConfirmedNow(registered) &&
                (row.annullata != cancelled || (cancelled && row.code.View() != ToldCode(registered))))
            {
                m_world.outside.Violated("the row of " + SubjectOf(m_world, static_cast<int>(registered.prescription)) +
                                         " does not show what the operator decided");
            }
        }
    }

    // Each with its own code, and between those the ones that only their order tells.
    void JudgeResults(const std::vector<Result>& results) const
    {
        std::vector<Place> places;
        places.reserve(results.size());
        for (const Result& result : results)
        {
            places.push_back(PlaceOf(result));
        }
        std::optional<std::size_t> last;
        bool inOrder = true;
        for (std::size_t i = 0; i < results.size(); ++i)
        {
            if (const auto known = places[i].collected)
            {
                inOrder = inOrder && (!last || *last < *known);
                last = known;
                JudgeStored(results[i]);
            }
        }
        if (inOrder)
        {
            JudgeGaps(results, places);
        }
    }

private:
    struct Place
    {
        bool isKnown = false;                 // registration told the code
        std::optional<std::size_t> collected; // place in m_collected when it did, of one that is stored
    };

    [[nodiscard]] Place PlaceOf(const Result& result) const
    {
        for (std::size_t i = 0; i < m_all.size(); ++i)
        {
            if (!result.code.empty() && ToldCode(m_all[i]) == result.code)
            {
                const auto found = std::ranges::find(m_collected, i);
                return {true, found == m_collected.end()
                                  ? std::nullopt
                                  : std::optional(static_cast<std::size_t>(found - m_collected.begin()))};
            }
        }
        return {};
    }

    void JudgeGaps(const std::vector<Result>& results, const std::vector<Place>& places) const
    {
        std::vector<std::size_t> taken; // by a code
        for (const Place& place : places)
        {
            if (place.collected)
            {
                taken.push_back(*place.collected);
            }
        }
        taken.push_back(m_collected.size());
        std::size_t collected = 0;
        std::size_t result = 0;
        for (const std::size_t end : taken)
        {
            std::vector<const Result*> gap;
            for (; result < results.size() && !places[result].collected; ++result)
            {
                if (!places[result].isKnown)
                {
                    gap.push_back(&results[result]);
                }
            }
            ++result;
            JudgeGap(gap, collected, end);
            collected = end + 1;
        }
    }

    // When the results are those of the prescriptions, each is stored.
    void JudgeGap(const std::vector<const Result*>& gap, std::size_t begin, std::size_t end) const
    {
        bool fits = gap.size() == end - begin;
        for (std::size_t i = 0; fits && i < gap.size(); ++i)
        {
            fits = gap[i]->registered == static_cast<int>(m_collected[begin + i]);
        }
        for (std::size_t i = 0; fits && i < gap.size(); ++i)
        {
            JudgeStored(*gap[i]);
        }
    }

    void JudgeStored(const Result& result) const
    {
        const Registered& registered = m_all.at(static_cast<std::size_t>(result.registered));
        const StoredRow& row = m_world.outside.rows.at(registered.prescription);
        if (result.isOk && !GoesRow(registered) &&
            (row.code.View() != result.code || row.protocol.View() != result.protocol || row.annullata))
        {
            m_world.outside.Violated("the final result of " +
                                     SubjectOf(m_world, static_cast<int>(registered.prescription)) +
                                     " is not in its row: " + result.code);
        }
    }

    [[nodiscard]] bool GoesRow(const Registered& registered) const
    {
        return m_world.plan.prescriptions.at(registered.prescription).rowGoes;
    }
    [[nodiscard]] bool IsConfirmedNow(const Registered& registered) const
    {
        return !m_world.outside.rows.at(registered.prescription).protocol.IsEmpty();
    }

    World& m_world;
    const std::vector<Registered>& m_all;
    bool m_cancels;
    std::vector<std::size_t> m_collected; // places in m_all
};

} // namespace

void JudgeRound(World& world, const Closing& closing)
{
    Outside& outside = world.outside;
    if (closing.button == Button::CancelAll)
    {
        for (const Registered& registered : world.network.All())
        {
            const std::string code = ToldCode(registered);
            if (!code.empty() &&
                !outside.journal.Tell(code, SubjectOf(world, static_cast<int>(registered.prescription))))
            {
                outside.Violated("no journal line for " + code + " of a batch that was given up");
            }
        }
    }
    else if (const Truth truth(world, closing); truth.IsClear())
    {
        truth.JudgeReview();
        if (const auto* results = world.network.Results())
        {
            truth.JudgeResults(*results);
        }
    }
    if (!world.tracesOnDisk && std::ranges::any_of(world.kept, [](const auto& kept) { return !kept->settled; }))
    {
        outside.Violated("a code is still open after the close");
    }
}

} // namespace vellumo::life
