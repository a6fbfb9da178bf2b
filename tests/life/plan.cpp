#include "tests/life/plan.h"

#include <algorithm>
#include <array>

namespace vellumo::life
{
namespace
{

// SplitMix64: the same numbers with every compiler and library.
class Dice
{
public:
    // Mixed first: seeds that follow each other would give the same numbers one throw later.
    explicit Dice(std::uint64_t seed)
        : m_state(Mix(seed))
    {
    }
    // 0 to `sides` - 1
    std::size_t Throw(std::size_t sides)
    {
        m_state += 0x9E3779B97F4A7C15U;
        return static_cast<std::size_t>(Mix(m_state) % sides);
    }
    bool OneIn(std::size_t count) { return Throw(count) == 0; }
    // Mostly none, else few of the bits.
    unsigned Mask(std::size_t oneIn)
    {
        return OneIn(oneIn) ? static_cast<unsigned>(Throw(64) & (OneIn(2) ? 63U : Throw(64))) : 0U;
    }

private:
    static std::uint64_t Mix(std::uint64_t number)
    {
        number = (number ^ (number >> 30U)) * 0xBF58476D1CE4E5B9U;
        number = (number ^ (number >> 27U)) * 0x94D049BB133111EBU;
        return number ^ (number >> 31U);
    }

    std::uint64_t m_state;
};

constexpr std::size_t mostPrescriptions = 5;

// The forms of both kinds have the same numbers.
void AddPrescriptions(Plan& plan, Dice& dice)
{
    std::array<std::int32_t, 4> used{};
    const std::size_t count = 1 + dice.Throw(mostPrescriptions);
    for (std::size_t i = 0; i < count; ++i)
    {
        const std::size_t kind = dice.Throw(2);
        const std::size_t form = dice.Throw(4) / 3;
        Prescription prescription{static_cast<std::int32_t>(kind + 1), static_cast<std::int32_t>(form + 101),
                                  ++used.at(kind * 2 + form)};
        prescription.withoutItems = kind == 0 && dice.OneIn(20);
        prescription.rowGoes = dice.OneIn(10);
        prescription.hasOldCode = dice.OneIn(10) && !prescription.rowGoes; // which would take it along
        plan.prescriptions.push_back(prescription);
    }
}

Fate RandomFate(Dice& dice)
{
    return dice.OneIn(3) ? Fate::Accepted : static_cast<Fate>(dice.Throw(fateCount));
}

Closing RandomClosing(Dice& dice)
{
    Closing closing;
    closing.button = static_cast<Button>(dice.Throw(buttonCount));
    closing.shape = dice.OneIn(2) ? Shape::Proper : static_cast<Shape>(dice.Throw(shapeCount));
    closing.order = dice.OneIn(2) ? Order::AsRegistered : static_cast<Order>(dice.Throw(orderCount));
    closing.missing = dice.Mask(4);
    closing.notOk = dice.Mask(6);
    closing.negative = dice.Mask(8);
    closing.otherCode = dice.Mask(6);
    closing.codeless = dice.Mask(10);
    closing.listsRefused = dice.OneIn(6);
    closing.strangers = dice.OneIn(5) ? static_cast<int>(1 + dice.Throw(3)) : 0;
    closing.byOtherProvider = dice.OneIn(5);
    closing.firstReleasedBefore = dice.OneIn(2);
    return closing;
}

void AddRounds(Plan& plan, Dice& dice)
{
    const std::size_t roundCount = dice.OneIn(6) ? 2 : 1;
    std::size_t next = 0;
    for (std::size_t i = 0; i < roundCount; ++i)
    {
        Round round;
        const bool isLast = i + 1 == roundCount;
        const std::size_t end = isLast ? plan.prescriptions.size() : dice.Throw(plan.prescriptions.size() + 1);
        for (; next < end; ++next)
        {
            round.sendings.push_back({next, RandomFate(dice)});
        }
        if (dice.OneIn(6)) // the same form once more
        {
            round.sendings.push_back({dice.Throw(plan.prescriptions.size()), RandomFate(dice)});
        }
        round.wholeForms = dice.OneIn(5);
        round.closes = !(isLast && dice.OneIn(20));
        round.closing = RandomClosing(dice);
        plan.rounds.push_back(round);
    }
}

void AddFaults(Plan& plan, Dice& dice)
{
    constexpr std::array<std::size_t, 8> counts = {0, 0, 0, 0, 1, 1, 2, 3};
    const std::size_t count = counts.at(dice.Throw(counts.size()));
    for (std::size_t i = 0; i < count; ++i)
    {
        const std::size_t latest = dice.OneIn(2) ? 3 : 14;
        plan.faults.push_back(
            {static_cast<Point>(dice.Throw(faultyPoints)), static_cast<int>(1 + dice.Throw(latest)), dice.OneIn(3)});
    }
}

} // namespace

Plan RandomPlan(std::uint64_t seed)
{
    Dice dice(seed);
    Plan plan;
    AddPrescriptions(plan, dice);
    AddRounds(plan, dice);
    AddFaults(plan, dice);
    plan.electronic = dice.OneIn(2);
    plan.fromTheStart = dice.OneIn(8);
    plan.brokenTemplates = dice.OneIn(40);
    plan.paddedCodes = dice.OneIn(8);
    if (dice.OneIn(25))
    {
        plan.deathAt = static_cast<int>(1 + dice.Throw(30 + 40 * plan.prescriptions.size()));
        plan.secondDeathAt = dice.OneIn(2) ? static_cast<int>(1 + dice.Throw(8)) : 0;
        plan.startsInVain = dice.OneIn(3);
    }
    return plan;
}

// --- All batches ---

namespace
{

constexpr std::size_t batchFates = fateCount + 1; // the last one: refused, and its row goes

// Ends of the phase that say each another thing of a batch of up to three.
constexpr std::array<Closing, 18> ends = {{
    {},
    {.missing = 1},
    {.missing = 2},
    {.missing = 4},
    {.strangers = 1},
    {.strangers = 2},
    {.order = Order::Reversed},
    {.order = Order::Rotated},
    {.listsRefused = true},
    {.notOk = 1},
    {.negative = 2},
    {.otherCode = 1},
    {.shape = Shape::Elsewhere},
    {.shape = Shape::RefusedQuietly},
    {.shape = Shape::RefusedBare},
    {.shape = Shape::WithoutOutcome},
    {.shape = Shape::LostBefore},
    {.shape = Shape::LostAfter},
}};

// Whoever presses "Annulla operazione" sends no end.
constexpr std::size_t closings = 1 + (buttonCount - 1) * ends.size();

Closing ClosingOf(std::size_t number)
{
    if (number == 0)
    {
        return {.button = Button::CancelAll};
    }
    constexpr std::array<Button, 3> buttons = {Button::PrintWithoutIup, Button::CancelRefused, Button::Frame};
    Closing closing = ends.at((number - 1) / buttons.size());
    closing.button = buttons.at((number - 1) % buttons.size());
    return closing;
}

std::size_t Take(std::uint64_t& number, std::size_t sides)
{
    const auto digit = static_cast<std::size_t>(number % sides);
    number /= sides;
    return digit;
}

} // namespace

std::uint64_t BatchCount(std::size_t size)
{
    std::uint64_t count = closings;
    for (std::size_t i = 0; i < size; ++i)
    {
        count *= 2 * batchFates;
    }
    return count;
}

Plan Batch(std::size_t size, std::uint64_t number)
{
    Plan plan;
    Round round;
    std::array<std::int32_t, 2> used{};
    round.closing = ClosingOf(Take(number, closings));
    for (std::size_t i = 0; i < size; ++i)
    {
        const std::size_t kind = Take(number, 2);
        const std::size_t fate = Take(number, batchFates);
        Prescription prescription{static_cast<std::int32_t>(kind + 1), 101, ++used.at(kind)};
        prescription.rowGoes = fate == fateCount;
        plan.prescriptions.push_back(prescription);
        round.sendings.push_back({i, prescription.rowGoes ? Fate::Refused : static_cast<Fate>(fate)});
    }
    plan.rounds.push_back(round);
    return plan;
}

} // namespace vellumo::life
