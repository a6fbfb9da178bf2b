// The simulated SISS of a life: takes registrations as the plan says, and knows whose each code is.
#pragma once

#include "tests/life/plan.h"

#include "tests/life/outside.h"

#include <string>
#include <string_view>
#include <vector>

namespace vellumo::life
{

class Network
{
public:
    Network(const Plan& plan, Outside& outside)
        : m_plan(plan)
        , m_outside(outside)
    {
    }

    // The registrations and the close that come next.
    void Expect(const Round& round);

    // SISS works on the request at once. The reply comes to the library by `Deliver`.
    void Receive(std::string_view request);
    // Faults when the bridge raises.
    [[nodiscard]] std::string Deliver();

    struct Registered
    {
        std::size_t prescription = 0;
        Fate fate = Fate::Accepted;
        std::string code; // "" for none
    };
    struct Result
    {
        int registered = -1; // place in `All`; -1: nobody's
        int prescription = -1;
        std::string code;
        std::string protocol;
        bool isOk = true;
        bool isNegative = false;
    };
    // Each registration that SISS heard of.
    [[nodiscard]] const std::vector<Registered>& All() const { return m_all; }
    // Of the last close; null when none were sent.
    [[nodiscard]] const std::vector<Result>* Results() const { return m_hasResults ? &m_results : nullptr; }

private:
    [[nodiscard]] std::string Register(std::string_view request);
    [[nodiscard]] std::string RegistrationReply(const Sending& sending, Registered& registered);
    [[nodiscard]] std::string End();
    void MakeResults();
    void Arrange(const Closing& closing);
    void AddResult(std::size_t place);
    [[nodiscard]] static std::string TextOf(const Result& result);
    [[nodiscard]] static std::string WithoutResults(Shape shape);
    [[nodiscard]] std::string NewCode();
    void CheckItems(std::string_view request, const Prescription& prescription) const;

    const Plan& m_plan;
    Outside& m_outside;
    const Round* m_round = nullptr;
    std::vector<Sending> m_expected; // not yet received
    std::vector<Registered> m_all;
    std::size_t m_phase = 0; // the first one since the last end
    std::vector<Result> m_results;
    bool m_hasResults = false;
    std::string m_lastCode;
    std::string m_reply;
    bool m_raises = false;
    std::size_t m_unreached = 0; // codes given before the reply that is on its way
};

} // namespace vellumo::life
