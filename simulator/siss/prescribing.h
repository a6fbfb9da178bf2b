// The prescribing phase of the simulated SISS: opened, filled with registrations, ended with the final result of each.
#pragma once

#include "simulator/siss/behaviour.h"
#include "simulator/siss/xml_text.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace vellumo::siss
{

// How a registration of the phase comes out when the phase is ended, other than well.
struct FinalOutcome
{
    std::string esito;     // text of esitoRegistrazione; "" leaves the element out
    std::string messaggio; // text of messaggioRegistrazione
    // Without `esito`: what esitoNegativo holds; a code of "" leaves that out, too.
    Refusal refusal;
};

class PrescribingPhase
{
public:
    // Its codes begin with "SIMUL" from now on.
    void MarkAsSimulation() noexcept { m_simulation = true; }
    [[nodiscard]] bool IsOpen() const noexcept { return m_open; }

    // Each answers the data node of its reply.
    std::string Begin();
    // Gives the prescription its unique code ("0300A4" and nine digits).
    std::string Register(const Element& request);
    // One result for each prescription that was registered in the phase: drugs, then all others, each in the order of
    // registration, unless an order was set.
    std::string End();

    // For the registration with this number within the phase, counted from 1.
    void SetOutcome(std::size_t registration, FinalOutcome outcome) { m_outcomes[registration] = std::move(outcome); }
    // Which registrations the next end of a phase reports, one behind the other; `newCode` for one of a prescription
    // that was never registered.
    void SetOrder(std::vector<std::size_t> registrations) { m_order = std::move(registrations); }
    static constexpr std::size_t newCode = 0;
    [[nodiscard]] bool HasOrder() const noexcept { return !m_order.empty(); }
    // Whether a phase with that registration has been ended.
    [[nodiscard]] bool HasReported(std::size_t registration) const noexcept { return registration <= m_reported; }

private:
    struct Registered
    {
        std::string code;
        std::string module; // number of the form: 15 digits
        bool isDrugs = false;
    };

    [[nodiscard]] Registered Issue(bool isDrugs);
    // What stands in the result of the registration at this position.
    [[nodiscard]] std::string ResultOf(std::size_t position) const;
    [[nodiscard]] std::vector<std::size_t> OwnOrder() const;

    bool m_simulation = false;
    bool m_open = false;
    std::vector<Registered> m_registered;
    std::map<std::size_t, FinalOutcome> m_outcomes;
    std::vector<std::size_t> m_order; // of the next end; empty: the proper one
    std::size_t m_reported = 0;       // registrations of the longest phase that has been ended
    int m_issued = 0;                 // codes given by this network so far
};

} // namespace vellumo::siss
