// A reply of SISS through a whole identification, with the report of what failed, held against what libxml2's own tree
// has at the same paths.
//
// The first byte of an input says how it is played, the rest is the reply:
//   bit 0   a local patient is to be checked, not searched      bit 2   the operator agrees to questions
//   bit 1   the citizen is known                                bit 3   his exemptions are paired
#include "environment/siss_date_time.h"
#include "fuzz/bare_document.h"
#include "fuzz/kept_practice.h"
#include "fuzz/oracle.h"
#include "patient/identification.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace vellumo::fuzz
{
namespace
{

constexpr std::int32_t known = 7;

struct Reply
{
    bool isXml = false;
    bool isComparable = false;
    xmlNode* data = nullptr; // of a call that did not fail
};

Reply Understand(const BareDocument& document)
{
    Reply reply;
    reply.isComparable = document.GetVerdict() != BareDocument::Verdict::Unknown;
    reply.isXml = document.HasTree();
    if (!reply.isXml)
    {
        return reply;
    }
    xmlNode* body = document.Select(document.Root(), "/SOAP-ENV:Envelope/SOAP-ENV:Body");
    body = body != nullptr ? body : document.Select(document.Root(), "/env:Envelope/env:Body");
    if (body == nullptr || document.Select(body, "SOAP-ENV:Fault") != nullptr ||
        document.Select(body, "env:Fault") != nullptr)
    {
        return reply;
    }
    xmlNode* service = body->children;
    while (service != nullptr && service->type != XML_ELEMENT_NODE)
    {
        service = service->next;
    }
    constexpr std::array names = {"m:ICCE.identificaCittadinoGUIResponse", "m:ICCE.identificaCittadinoEstesoResponse",
                                  "m:ICCE.identificaCittadinoResponse"};
    if (service == nullptr || std::count(names.begin(), names.end(), BareDocument::Name(service)) == 0)
    {
        // Other services keep their data elsewhere; nobody identifies through them.
        reply.isComparable = reply.isComparable && service == nullptr;
        return reply;
    }
    constexpr const char* wrapperPath = "rispostaSingola/rispostaCittadinoIdentificato";
    xmlNode* const outcome = document.Select(service, "esitoIdentifica");
    xmlNode* const wrapper = document.Select(outcome, wrapperPath);
    xmlNode* const data = document.Select(outcome, std::string(wrapperPath) + "/datiRisposta");
    bool failed = outcome == nullptr || document.Select(outcome, "esitoNegativo") != nullptr;
    for (xmlNode* const node : {outcome, wrapper, data})
    {
        failed = failed || document.Select(node, "listaEccezioni/eccezione") != nullptr;
    }
    reply.data = failed ? nullptr : data;
    return reply;
}

void CompareStored(const tests::Columns& columns, const BareDocument& document, xmlNode* data)
{
    constexpr std::array<std::pair<const char*, const char*>, 5> texts = {{
        {"CodiceFiscale", "datiCittadino/codiceFiscaleCittadino"},
        {"Cognome", "datiCittadino/cognomeCittadino"},
        {"Nome", "datiCittadino/nomeCittadino"},
        {"Sesso", "datiCittadino/sessoCittadino"},
        {"NumTesseraSanitaria", "datiCittadino/codiceSanitarioCittadino"},
    }};
    for (const auto& [column, path] : texts)
    {
        RequireSame(columns.at(column).ToText(), document.Text(data, path), column);
    }
    const auto born = environment::ConvertSissDateTime(document.Text(data, "datiCittadino/dataNascitaCittadino"));
    Require(columns.at("DataNascita") == host::Value::DateOrNull(born), "the date of birth");
}

void Prepare(KeptPractice& practice, unsigned how)
{
    practice.Renew();
    if ((how & 2U) != 0)
    {
        practice.parts.utils->valueOf =
            [paired = practice.parts.utils->valueOf](const std::string& sql, const host::Parameters& parameters)
        { return sql.find("FROM Paziente") == std::string::npos ? paired(sql, parameters) : host::Value(known); };
    }
    if ((how & 4U) != 0)
    {
        practice.parts.desktop.answers = {ui::Answer::Yes, ui::Answer::Retry, ui::Answer::Yes};
    }
    if ((how & 8U) == 0)
    {
        practice.parts.utils->valueOf = nullptr;
    }
}

} // namespace
} // namespace vellumo::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace vellumo;
    using namespace vellumo::fuzz;
    static KeptPractice practice;
    const unsigned how = size == 0 ? 0 : data[0];
    practice.parts.bridge.reply = std::string(View(data, size).substr(std::min<std::size_t>(size, 1)));
    Prepare(practice, how);

    const auto outcome =
        patient::Identification(practice.context).Run((how & 1U) != 0 ? host::Value(known) : host::Value());

    const BareDocument document(practice.parts.bridge.reply);
    const auto reply = Understand(document);
    const auto& patient = practice.parts.objects.patient;
    Require(patient.saved <= 1 && practice.Committed(patient.saved == 0 ? 0 : 1), "one patient, one transaction");
    Require(!practice.parts.bridge.requests.empty() && practice.parts.bridge.requests.size() <= 4, "how often it asks");
    Require(patient.saved == 0 || outcome.IDPaziente == patient.id, "whom the host gets");
    if (!reply.isComparable)
    {
        return 0;
    }
    const bool hasKey =
        reply.data != nullptr && (!document.Text(reply.data, "datiCittadino/codiceFiscaleCittadino").empty() ||
                                  !document.Text(reply.data, "datiCittadino/codiceSanitarioCittadino").empty() ||
                                  !document.Text(reply.data, "datiCittadino/cognomeCittadino").empty());
    Require(patient.saved == 0 || hasKey, "who is stored has been identified");
    if (patient.saved != 0)
    {
        CompareStored(patient.columns, document, reply.data);
    }
    else if (hasKey && document.Select(reply.data, "esenzioniGodute/esenzione") == nullptr && (how & 2U) == 0)
    {
        Require(false, "who has been identified is stored");
    }
    // Nothing ends without a word: a box, or a line.
    Require(hasKey || !practice.parts.desktop.prompts.empty() || !practice.traces.lines.empty() ||
                practice.parts.bridge.reply.find("APPL000103") != std::string::npos,
            "what goes wrong is told");
    return 0;
}
