// The simulated contact service: personal and address data of the citizens that somebody has registered with it.
#pragma once

#include "simulator/siss/service_answer.h"
#include "simulator/siss/xml_text.h"

#include <set>
#include <string>

namespace vellumo::siss
{

class Contacts
{
public:
    static constexpr const char* insertion = "m:ICCE.inserisciDatiContatto";
    static constexpr const char* modification = "m:ICCE.modificaDatiContatto";

    void Add(const std::string& codiceFiscale) { m_known.insert(codiceFiscale); }

    // `request` is the service's element. A contact that is there already is refused with the code and the field that
    // ask for its modification.
    [[nodiscard]] ServiceAnswer Insert(const Element& request);
    // "N" for a contact that nobody has registered.
    [[nodiscard]] ServiceAnswer Modify(const Element& request) const;

    // The data of a good reply: its outcome, "S" or "N".
    [[nodiscard]] static std::string Result(const std::string& text);

private:
    std::set<std::string> m_known; // fiscal codes
};

} // namespace vellumo::siss
