// What the reply to the end of a prescribing phase says of each prescription, and whose it is.
#pragma once

#include "service/service_response.h"
#include "xml/document.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
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

// In the order of the reply, wherever they stand in it.
[[nodiscard]] std::vector<FinalResult> FinalResults(const service::ServiceResponse& response);

// What the registration of one prescription left.
struct Registered
{
    std::string iup;        // given by SISS, "" for none
    bool collected = false; // takes part in the end of the phase: the operator did not cancel it
};

// Positions in what was handed over.
struct Pairing
{
    struct Pair
    {
        std::size_t result;
        std::size_t prescription; // a collected one
        bool operator==(const Pair&) const = default;
    };
    struct LeftOver
    {
        std::size_t result;
        std::optional<std::size_t> prescription; // that registration gave the result's code to
        bool operator==(const LeftOver&) const = default;
    };

    std::vector<Pair> pairs;        // in the order of the results
    std::vector<LeftOver> leftOver; // likewise
};

// `codes` of the results in the order of the reply, "" for none.
//
// A result whose code registration gave belongs to the prescription that got it; it is left over when that one is not
// collected, or has a result already. Several collected prescriptions with one code take its results in order. All that
// registration does not tell is told by the order: between two prescriptions that have their results, results and
// prescriptions follow each other; when those that have theirs came in another order than they were registered in, all
// others do. What one side has too much stays without a pair.
[[nodiscard]] Pairing PairFinalResults(const std::vector<std::string>& codes,
                                       const std::vector<Registered>& prescriptions);

} // namespace vellumo::prescription
