#include "patient/citizen.h"

#include "environment/siss_date_time.h"
#include "host/text.h"

#include <cstddef>
#include <string_view>

namespace vellumo::patient
{
namespace
{

using environment::ConvertSissDateTime;
using host::ResidenceKind;

constexpr std::size_t aslCodePart = 3;

// Where a kind of document has the data of a citizen, as paths below his node. Of an address the path is
// `addressPrefix`, what it is (such as "cap"), the name of its kind, `addressSuffix`.
struct Layout
{
    const char* codiceFiscale;
    const char* codiceSanitario;
    const char* cognome;
    const char* nome;
    const char* sesso;
    const char* dataNascita;
    const char* comuneNascita;
    const char* inizioScelta;
    const char* fineScelta;
    const char* siglaAsl;
    const char* descrizioneAsl;
    const char* decorrenzaIscrizione;
    const char* scadenzaIscrizione;
    std::array<ResidenceKind, 2> addresses;
    const char* addressPrefix;
    const char* addressSuffix;
};

constexpr Layout identificationReply = {
    .codiceFiscale = "datiCittadino/codiceFiscaleCittadino",
    .codiceSanitario = "datiCittadino/codiceSanitarioCittadino",
    .cognome = "datiCittadino/cognomeCittadino",
    .nome = "datiCittadino/nomeCittadino",
    .sesso = "datiCittadino/sessoCittadino",
    .dataNascita = "datiCittadino/dataNascitaCittadino",
    .comuneNascita = "datiCittadino/comuneNascitaCittadino",
    .inizioScelta = "datiMedico/dataInizioScelta",
    .fineScelta = "datiMedico/dataFineScelta",
    .siglaAsl = "datiCittadino/siglaAslAppartenenza",
    .descrizioneAsl = "datiCittadino/descrizioneAslAppartenenza",
    .decorrenzaIscrizione = "datiCittadino/dataDecorrenzaIscrizione",
    .scadenzaIscrizione = "datiCittadino/dataScadenzaIscrizione",
    .addresses = {ResidenceKind::Residence, ResidenceKind::Domicile},
    .addressPrefix = "datiCittadino/",
    .addressSuffix = "Cittadino",
};

constexpr Layout patientList = {
    .codiceFiscale = "codiceFiscale",
    .codiceSanitario = "codiceSanitario",
    .cognome = "cognome",
    .nome = "nome",
    .sesso = "sesso",
    .dataNascita = "dataNascita",
    .comuneNascita = "comuneNascita",
    .inizioScelta = "dataInizioSceltaMedico",
    .fineScelta = "dataFineSceltaMedico",
    .siglaAsl = "siglaAslAppartenenza",
    .descrizioneAsl = "descAslAppartenenza",
    .decorrenzaIscrizione = "dataDecorrenzaIscrizione",
    .scadenzaIscrizione = "dataScadenzaIscrizione",
    .addresses = {ResidenceKind::Domicile, ResidenceKind::Residence},
    .addressPrefix = "",
    .addressSuffix = "",
};

Address ReadAddress(const xml::Node& node, const Layout& layout, ResidenceKind kind)
{
    const auto text = [&](const char* part)
    { return node.Text(std::string(layout.addressPrefix).append(part).append(NameOf(kind)) + layout.addressSuffix); };
    return {kind, text("indirizzo"), text("civico"), text("cap"), text("comune")};
}

Citizen Read(const xml::Node& node, const Layout& layout)
{
    const auto text = [&](const char* path) { return node.Text(path); };
    const auto date = [&](const char* path) { return ConvertSissDateTime(node.Text(path)); };
    Citizen citizen;
    citizen.person = {.codiceFiscale = text(layout.codiceFiscale),
                      .codiceSanitario = text(layout.codiceSanitario),
                      .cognome = text(layout.cognome),
                      .nome = text(layout.nome),
                      .sesso = text(layout.sesso),
                      .dataNascita = date(layout.dataNascita),
                      .comuneNascita = text(layout.comuneNascita)};
    citizen.choice = {.inizio = date(layout.inizioScelta), .fine = date(layout.fineScelta)};
    citizen.asl = {.sigla = text(layout.siglaAsl),
                   .descrizione = text(layout.descrizioneAsl),
                   .decorrenza = date(layout.decorrenzaIscrizione),
                   .scadenza = date(layout.scadenzaIscrizione)};
    for (std::size_t i = 0; i < citizen.addresses.size(); ++i)
    {
        citizen.addresses.at(i) = ReadAddress(node, layout, layout.addresses.at(i));
    }
    return citizen;
}

// Exactly these two states mean something.
std::optional<bool> IsRevoked(std::string_view statoAssistito)
{
    return statoAssistito == "ATTIVO"       ? std::optional(false)
           : statoAssistito == "NON-ATTIVO" ? std::optional(true)
                                            : std::nullopt;
}

} // namespace

std::string Asl::RegionCode() const
{
    return host::FirstCharacters(sigla, aslCodePart);
}

std::string Asl::Number() const
{
    return host::LastCharacters(sigla, aslCodePart);
}

std::string Address::StreetAndNumber() const
{
    return indirizzo.empty() || civico.empty() ? indirizzo : indirizzo + ", " + civico;
}

Citizen ReadIdentified(const xml::Node& data)
{
    Citizen citizen = Read(data, identificationReply);
    citizen.revoked = IsRevoked(data.Text("datiCittadino/statoAssistito"));
    for (const xml::Node& node : data.SelectAll("esenzioniGodute/esenzione"))
    {
        ui::SissExemption exemption;
        exemption.Codice = node.Text("codiceEsenzione");
        exemption.DataEsenzione = ConvertSissDateTime(node.Text("decorrenzaEsenzione"));
        exemption.Scadenza = ConvertSissDateTime(node.Text("scadenzaEsenzione"));
        citizen.exemptions.push_back(std::move(exemption));
    }
    return citizen;
}

Citizen ReadListed(const xml::Node& citizen)
{
    Citizen listed = Read(citizen, patientList);
    listed.revoked = false;
    return listed;
}

} // namespace vellumo::patient
