// What the reply to the end of a prescribing phase says of each prescription, and whose it is.
#pragma once

#include "prescription/sent_prescription.h"
#include "service/service_response.h"
#include "xml/document.h"

#include <string>
#include <vector>

namespace vellumo::prescription
{

// A node `risultatoRegistrazione`.
class FinalResult
{
public:
    explicit FinalResult(xml::Node node)
        : m_node(std::move(node))
    {
    }

    // Without an outcome the registration was refused.
    [[nodiscard]] bool HasOutcome() const { return static_cast<bool>(Outcome()); }
    [[nodiscard]] bool IsConfirmed() const { return Outcome().Text() == "OK"; }
    [[nodiscard]] xml::Node Refusal() const { return m_node.Select("esitoNegativo"); }
    [[nodiscard]] std::string Message() const { return m_node.Text("messaggioRegistrazione"); }
    [[nodiscard]] std::string Iup() const { return m_node.Text("identificativoUnivoco"); }
    [[nodiscard]] std::string Protocollo() const { return m_node.Text("idModulo"); }

private:
    [[nodiscard]] xml::Node Outcome() const { return m_node.Select("esitoRegistrazione"); }

    xml::Node m_node;
};

// In the order of the reply.
[[nodiscard]] std::vector<FinalResult> FinalResults(const service::ServiceResponse& response);

struct PairedResult
{
    FinalResult result;
    SentPrescription* prescription; // never null
};

// The results carry no sign of the prescription that they belong to: their order decides. What one side has more than
// the other stays without a pair.
[[nodiscard]] std::vector<PairedResult> PairFinalResults(const std::vector<FinalResult>& results,
                                                         const std::vector<SentPrescription*>& prescriptions);

} // namespace vellumo::prescription
