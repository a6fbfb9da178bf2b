// The simulated certificate service: takes sickness certificates in for INPS, which gives each a protocol number.
#pragma once

#include "simulator/siss/service_answer.h"
#include "simulator/siss/xml_text.h"

#include <cstdint>
#include <string>

namespace vellumo::siss
{

class Certificates
{
public:
    static constexpr const char* service = "m:GCM.invioCertificatoMalattia";

    // Its protocol numbers begin with "SIMUL" from now on.
    void MarkAsSimulation() noexcept { m_simulation = true; }
    // `request` is the service's element. Refuses a certificate that lacks what INPS wants or ends before it begins.
    [[nodiscard]] ServiceAnswer Receive(const Element& request);

    // The data node of a good reply. `date` as the service writes it; "" for what is to be empty.
    [[nodiscard]] static std::string Receipt(const std::string& protocol, const std::string& date);

private:
    bool m_simulation = false;
    std::int32_t m_lastProtocol = 350000000;
};

} // namespace vellumo::siss
