#include "simulator/siss/prescribing.h"

#include "simulator/siss/replies.h"

#include <utility>

#include <algorithm>

namespace vellumo::siss
{
namespace
{

constexpr std::string_view drugs = "01"; // tipologiaPrescrizione

std::string Numbered(const std::string& prefix, int number, std::size_t digits)
{
    const auto text = std::to_string(number);
    return prefix + std::string(digits - text.size(), '0') + text;
}

} // namespace

std::string PrescribingPhase::Begin()
{
    m_open = true;
    m_registered.clear();
    return "<datiRisposta><esitoServizio>OK</esitoServizio></datiRisposta>";
}

std::string PrescribingPhase::Register(const Element& request)
{
    const auto kind =
        request.TextAt("param/nuovaPrescrizione/datiAmministrativiPrescrizione/tipologiaPrescrizione").value_or("");
    m_registered.push_back(Issue(kind == drugs));
    return Wrapped("datiRisposta",
                   Wrapped("datiAmministrativiPrescrizione", Leaf("identificativoUnivoco", m_registered.back().code)));
}

PrescribingPhase::Registered PrescribingPhase::Issue(bool isDrugs)
{
    ++m_issued;
    return {Numbered(m_simulation ? "SIMUL0" : "0300A4", m_issued, 9), Numbered("030", m_issued, 12), isDrugs};
}

std::vector<std::size_t> PrescribingPhase::OwnOrder() const
{
    std::vector<std::size_t> order;
    for (const bool ofDrugs : {true, false})
    {
        for (std::size_t i = 0; i < m_registered.size(); ++i)
        {
            if (m_registered[i].isDrugs == ofDrugs)
            {
                order.push_back(i + 1);
            }
        }
    }
    return order;
}

std::string PrescribingPhase::End()
{
    const auto order = m_order.empty() ? OwnOrder() : std::exchange(m_order, {});
    m_reported = std::max(m_reported, m_registered.size());
    std::string results;
    for (const auto registration : order)
    {
        if (registration == newCode)
        {
            m_registered.push_back(Issue(true));
        }
        const auto position = registration == newCode ? m_registered.size() : registration;
        if (position <= m_registered.size())
        {
            results += Wrapped("risultatoRegistrazione", ResultOf(position - 1));
        }
    }
    m_open = false;
    return Wrapped("datiRisposta", Wrapped("elencoRisultati", results));
}

std::string PrescribingPhase::ResultOf(std::size_t position) const
{
    const auto own = m_outcomes.find(position + 1);
    if (own == m_outcomes.end())
    {
        const Registered& registered = m_registered[position];
        return Leaf("esitoRegistrazione", "OK") + Leaf("idModulo", registered.module) +
               Leaf("identificativoUnivoco", registered.code) + Leaf("messaggioRegistrazione", "");
    }
    const FinalOutcome& outcome = own->second;
    if (!outcome.esito.empty())
    {
        return Leaf("esitoRegistrazione", outcome.esito) + Leaf("messaggioRegistrazione", outcome.messaggio);
    }
    return outcome.refusal.code.empty() ? std::string() : NegativeOutcome(outcome.refusal);
}

} // namespace vellumo::siss
