// The simulated SISS network, behind the one method of the client bridge. It keeps what the real one keeps: citizens,
// whether a session is active and the operator's card is in the reader, which citizen the operator picks in SISS's own
// search window, and the prescribing phase with the codes that it issued. Everything that was exchanged can be looked
// at afterwards.
#pragma once

#include "host/bridge.h"
#include "simulator/siss/behaviour.h"
#include "simulator/siss/certificates.h"
#include "simulator/siss/citizens.h"
#include "simulator/siss/contacts.h"
#include "simulator/siss/prescribing.h"
#include "simulator/siss/xml_text.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellumo::siss
{

struct Exchange
{
    std::string request;
    std::string reply; // "" also when the bridge raised an error
};

class Network final : public host::Bridge
{
public:
    [[nodiscard]] std::string CallSebMethod(const std::string& requestXml) override;

    PrescribingPhase& Prescribing() noexcept { return m_prescribing; }
    Citizens& People() noexcept { return m_citizens; }
    [[nodiscard]] const Citizens& People() const noexcept { return m_citizens; }
    Contacts& KnownContacts() noexcept { return m_contacts; }

    // From now on its codes and numbers begin with "SIMUL" and can be taken for no network's.
    void MarkAsSimulation();

    // Without a session the bridge has nobody to talk to and answers with a plain text.
    void SetSessionActive(bool active) noexcept { m_sessionActive = active; }
    void SetOperatorCard(bool inserted) noexcept { m_operatorCard = inserted; }
    // Who is picked in SISS's own window; "" closes that window without picking anybody.
    void SetChosenCitizen(std::string codiceFiscale) { m_chosen = std::move(codiceFiscale); }

    // For the call with this number, counted from 1; 0 stands for every call that has no behaviour of its own.
    void Behave(std::size_t call, Behaviour behaviour) { m_behaviours[call] = std::move(behaviour); }
    // Whether it has been asked for.
    [[nodiscard]] bool HasBehaved(std::size_t call) const { return m_behaved.count(call) != 0; }

    [[nodiscard]] const std::vector<Exchange>& Exchanges() const noexcept { return m_exchanges; }

    // Runs while a call travels, before it is answered.
    std::function<void(const std::string& requestXml)> onCall;
    // Runs with its answer, just before that is given back.
    std::function<void(const std::string& reply)> onReply;

private:
    [[nodiscard]] std::string Answer(const Element& request, const Behaviour& behaviour);
    [[nodiscard]] std::string AnswerPrescribing(const Element& request, const Behaviour& behaviour);
    // What the services make of a certificate or a contact; empty for any other request.
    [[nodiscard]] std::optional<ServiceAnswer> TakeIn(const Element& request);

    Citizens m_citizens;
    PrescribingPhase m_prescribing;
    Certificates m_certificates;
    Contacts m_contacts;
    bool m_sessionActive = true;
    bool m_operatorCard = true;
    std::string m_chosen;
    std::map<std::size_t, Behaviour> m_behaviours;
    std::set<std::size_t> m_behaved;
    std::vector<Exchange> m_exchanges;
};

} // namespace vellumo::siss
