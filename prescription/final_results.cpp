#include "prescription/final_results.h"

#include <algorithm>

namespace vellumo::prescription
{
namespace
{

class Pairer
{
public:
    Pairer(const std::vector<std::string>& codes, const std::vector<Registered>& prescriptions)
        : m_codes(codes)
        , m_prescriptions(prescriptions)
        , m_results(codes.size())
        , m_free(prescriptions.size())
    {
        std::transform(prescriptions.begin(), prescriptions.end(), m_free.begin(),
                       [](const Registered& prescription) { return prescription.collected; });
    }

    Pairing Run()
    {
        for (std::size_t result = 0; result < m_codes.size(); ++result)
        {
            PlaceByCode(result);
        }
        const auto placed = Collect().pairs;
        if (std::ranges::is_sorted(placed, {}, &Pairing::Pair::prescription))
        {
            PairGaps(placed);
        }
        else
        {
            PairInOrder({0, 0}, End());
        }
        return Collect();
    }

private:
    struct Result
    {
        bool isLeftOver = false;
        std::optional<std::size_t> prescription; // of a left-over one: that the code was given to
    };

    [[nodiscard]] Pairing::Pair End() const { return {m_codes.size(), m_prescriptions.size()}; }

    void Pair(std::size_t result, std::size_t prescription)
    {
        m_results[result].prescription = prescription;
        m_free[prescription] = false;
    }

    // The first prescription that got this code and meets the condition.
    template <class Condition>
    [[nodiscard]] std::optional<std::size_t> FindGiven(const std::string& code, Condition&& condition) const
    {
        for (std::size_t i = 0; i < m_prescriptions.size(); ++i)
        {
            if (m_prescriptions[i].iup == code && condition(i))
            {
                return i;
            }
        }
        return std::nullopt;
    }

    void PlaceByCode(std::size_t result)
    {
        const std::string& code = m_codes[result];
        if (code.empty())
        {
            return;
        }
        const auto cancelled = FindGiven(code, [&](std::size_t i) { return !m_prescriptions[i].collected; });
        const auto free = FindGiven(code, [&](std::size_t i) { return m_free[i]; });
        if (!cancelled && free)
        {
            Pair(result, *free);
        }
        else if (const auto owner = cancelled ? cancelled : FindGiven(code, [](std::size_t) { return true; }))
        {
            m_results[result] = {true, owner};
        }
    }

    void PairGaps(const std::vector<Pairing::Pair>& placed)
    {
        Pairing::Pair begin = {0, 0};
        for (const auto& pair : placed)
        {
            PairInOrder(begin, pair);
            begin = {pair.result + 1, pair.prescription + 1};
        }
        PairInOrder(begin, End());
    }

    // Results and prescriptions from `begin` up to `end` that have no pair yet.
    void PairInOrder(Pairing::Pair begin, const Pairing::Pair& end)
    {
        for (auto [result, prescription] = begin; result < end.result; ++result)
        {
            if (m_results[result].isLeftOver || m_results[result].prescription)
            {
                continue;
            }
            while (prescription < end.prescription && !m_free[prescription])
            {
                ++prescription;
            }
            if (prescription == end.prescription)
            {
                return;
            }
            Pair(result, prescription);
        }
    }

    [[nodiscard]] Pairing Collect() const
    {
        Pairing pairing;
        for (std::size_t i = 0; i < m_results.size(); ++i)
        {
            const Result& result = m_results[i];
            if (result.prescription && !result.isLeftOver)
            {
                pairing.pairs.push_back({i, *result.prescription});
            }
            else
            {
                pairing.leftOver.push_back({i, result.prescription});
            }
        }
        return pairing;
    }

    const std::vector<std::string>& m_codes;
    const std::vector<Registered>& m_prescriptions;
    std::vector<Result> m_results;
    std::vector<bool> m_free; // collected and without a result
};

} // namespace

std::vector<FinalResult> FinalResults(const service::ServiceResponse& response)
{
    const auto nodes = response.Body.Descendants("risultatoRegistrazione");
    return {nodes.begin(), nodes.end()};
}

Pairing PairFinalResults(const std::vector<std::string>& codes, const std::vector<Registered>& prescriptions)
{
    return Pairer(codes, prescriptions).Run();
}

} // namespace vellumo::prescription
