// A file imported as the list of the doctor's patients, held against what libxml2 reads of it, encoding included.
#include "environment/siss_date_time.h"
#include "fuzz/bare_document.h"
#include "fuzz/kept_practice.h"
#include "fuzz/oracle.h"
#include "patient/patient_list_import.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vellumo::fuzz
{
namespace
{

constexpr const char* fileName = "elenco.xml";

struct Listed
{
    std::string codiceFiscale;
    std::string codiceSanitario;
    std::string cognome;
    std::string indirizzo;
    std::string civico;

    [[nodiscard]] bool CanBeFound() const
    {
        return !codiceFiscale.empty() || !codiceSanitario.empty() || !cognome.empty();
    }
};

std::vector<Listed> Citizens(const BareDocument& document)
{
    std::vector<Listed> listed;
    for (xmlNode* const node : document.SelectAll(document.Root(), "assistito"))
    {
        listed.push_back({document.Text(node, "codiceFiscale"), document.Text(node, "codiceSanitario"),
                          document.Text(node, "cognome"), document.Text(node, "indirizzoResidenza"),
                          document.Text(node, "civicoResidenza")});
    }
    return listed;
}

bool IsList(const BareDocument& document, const std::vector<Listed>& listed)
{
    bool hasElement = false;
    for (const xmlNode* child = document.Root()->children; child != nullptr; child = child->next)
    {
        hasElement = hasElement || child->type == XML_ELEMENT_NODE;
    }
    bool hasSomebody = false;
    for (const Listed& one : listed)
    {
        hasSomebody = hasSomebody || one.CanBeFound();
    }
    return BareDocument::Name(document.Root()) == "assistiti" && (!hasElement || hasSomebody);
}

// The residence of each citizen, in the order in which they were stored.
std::vector<std::string> Import(KeptPractice& practice, bool& done)
{
    std::vector<std::string> residences;
    practice.Renew();
    practice.parts.desktop.file = practice.parts.installation.Path(fileName);
    practice.parts.utils->rowWritten = [&](const std::string& table, const std::vector<host::ColumnValue>& columns)
    {
        constexpr std::int32_t residence = 1;
        if (table == "Residenza" && columns.at(1).value.ToInteger() == residence)
        {
            residences.push_back(columns.at(2).value.ToText());
        }
    };
    done = patient::PatientListImport(practice.context).Run();
    return residences;
}

} // namespace
} // namespace vellumo::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace vellumo;
    using namespace vellumo::fuzz;
    static KeptPractice practice;
    practice.parts.installation.Write(fileName, View(data, size));
    bool done = false;
    const auto residences = Import(practice, done);

    const auto& patient = practice.parts.objects.patient;
    const auto saved = static_cast<std::size_t>(patient.saved);
    Require(!practice.parts.desktop.prompts.empty(), "the operator is told");
    Require(done ? practice.Committed(saved + 1) : practice.Committed(0), "a transaction each, and one to revoke");

    const BareDocument document(View(data, size), BareDocument::Reading::AsAFile);
    if (!document.HasTree())
    {
        return 0; // libxml2 knows other encodings, and fewer bytes of some
    }
    const bool hasUpperControls = std::ranges::any_of(View(data, size), [](char byte)
                                                      { return (static_cast<unsigned char>(byte) & 0xE0U) == 0x80; });
    if (hasUpperControls && View(data, size).find("8859") != std::string_view::npos)
    {
        return 0; // what Windows writes as ISO-8859-1 is its own code page, and is read as that
    }
    const auto listed = Citizens(document);
    if (!done)
    {
        // An encoding that only libxml2 knows is no list.
        Require(!IsList(document, listed) || View(data, size).find("encoding") != std::string_view::npos ||
                    View(data, size).find('\0') != std::string_view::npos,
                "a list is taken");
        return 0;
    }
    Require(IsList(document, listed), "what is taken is a list");
    std::size_t stored = 0;
    for (const Listed& one : listed)
    {
        if (one.CanBeFound())
        {
            Require(stored < residences.size(), "everybody is stored");
            RequireSame(residences[stored++],
                        one.indirizzo.empty() || one.civico.empty() ? one.indirizzo : one.indirizzo + ", " + one.civico,
                        "a residence");
        }
    }
    Require(stored == saved && stored == residences.size(), "nobody else is stored");
    if (saved != 0 && listed.back().CanBeFound())
    {
        RequireSame(patient.columns.at("CodiceFiscale").ToText(), listed.back().codiceFiscale, "the fiscal code");
        RequireSame(patient.columns.at("Cognome").ToText(), listed.back().cognome, "the surname");
    }
    return 0;
}
