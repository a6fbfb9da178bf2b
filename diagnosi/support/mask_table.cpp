#include "diagnosi/support/mask_table.h"

#include "host/text.h"

#include <algorithm>

namespace vellumo::diagnosi
{
namespace
{

struct ElementRow
{
    std::string_view name;
    Mask mask;
};

constexpr std::array elements = std::to_array<ElementRow>({
    // how a call ended
    {"codiceErrore", Mask::Keep},
    {"codiceEccezione", Mask::Keep},
    {"codiceWarning", Mask::Keep},
    {"codiceEccezioneCampo", Mask::Keep},
    {"codiceWarningCampo", Mask::Keep},
    {"nomeCampo", Mask::Keep},
    {"faultcode", Mask::Keep},
    {"errorCode", Mask::Keep},
    {"esitoServizio", Mask::Keep},
    {"esitoRegistrazione", Mask::Keep},
    {"descErrore", Mask::Text},
    {"descEccezione", Mask::Text},
    {"descWarning", Mask::Text},
    {"descEccezioneCampo", Mask::Text},
    {"descWarningCampo", Mask::Text},
    {"faultstring", Mask::Text},
    {"messaggioRegistrazione", Mask::Text},
    // codes that SISS and INPS give, and when
    {"identificativoUnivoco", Mask::Keep},
    {"idModulo", Mask::Keep},
    {"protocolloINPS", Mask::Keep},
    {"dataRicezione", Mask::Keep},
    {"dataRilascio", Mask::Keep},
    {"dataInizio", Mask::Keep},
    {"dataFine", Mask::Keep},
    // how the request was to be dealt with
    {"naturaPrescrizione", Mask::Keep},
    {"flagFuoriRegione", Mask::Keep},
    {"tipoModulo", Mask::Keep},
    {"flagSuggerita", Mask::Keep},
    {"flagUrgenza", Mask::Keep},
    {"campoPriorita", Mask::Keep},
    {"flagRipetibile", Mask::Keep},
    {"tipologiaPrescrizione", Mask::Keep},
    {"flagOspedaliera", Mask::Keep},
    {"flagAltro", Mask::Keep},
    {"stampaRicetta", Mask::Keep},
    {"quantitaPrestazione", Mask::Keep},
    {"tipoCertificato", Mask::Keep},
    {"tipoVisita", Mask::Keep},
    {"tipoRilevazione", Mask::Keep},
    {"statoAssistito", Mask::Keep},
    // authorities, each of hundreds of thousands of people
    {"siglaAslAppartenenza", Mask::Keep},
    {"codiceAslAssistenza", Mask::Keep},
    {"codiceASL", Mask::Keep},
    {"regione", Mask::Keep},
    // people
    {"codiceFiscale", Mask::FiscalCode},
    {"codiceFiscaleCittadino", Mask::FiscalCode},
    {"codiceSanitarioCittadino", Mask::Card},
    {"idAssistito", Mask::Card},
    {"cognome", Mask::Surname},
    {"cognomeCittadino", Mask::Surname},
    {"nome", Mask::GivenName},
    {"nomeCittadino", Mask::GivenName},
    {"dataNascita", Mask::Year},
    {"dataNascitaCittadino", Mask::Year},
    {"dataDecesso", Mask::Year},
    {"dataDecorrenzaIscrizione", Mask::Year},
    {"dataScadenzaIscrizione", Mask::Year},
    {"dataInizioScelta", Mask::Year},
    {"dataFineScelta", Mask::Year},
    {"decorrenzaEsenzione", Mask::Year},
    {"scadenzaEsenzione", Mask::Year},
    // places
    {"indirizzo", Mask::Place},
    {"civico", Mask::Place},
    {"cap", Mask::Place},
    {"CAP", Mask::Place},
    {"comune", Mask::Place},
    {"idComune", Mask::Place},
    {"provincia", Mask::Place},
    {"localita", Mask::Place},
    {"idLocalitaNascita", Mask::Place},
    {"comuneNascita", Mask::Place},
    {"idComuneNascita", Mask::Place},
    {"provinciaNascita", Mask::Place},
    {"comuneNascitaCittadino", Mask::Place},
    {"indirizzoResidenzaCittadino", Mask::Place},
    {"civicoResidenzaCittadino", Mask::Place},
    {"capResidenzaCittadino", Mask::Place},
    {"comuneResidenzaCittadino", Mask::Place},
    {"indirizzoDomicilioCittadino", Mask::Place},
    {"civicoDomicilioCittadino", Mask::Place},
    {"capDomicilioCittadino", Mask::Place},
    {"comuneDomicilioCittadino", Mask::Place},
    {"siglaProvinciaAssistenza", Mask::Place},
    {"descrizioneAslAppartenenza", Mask::Place},
    // health
    {"codiceEsenzione", Mask::Health},
    {"progrAutocertReddito", Mask::Health},
    {"flagAltreEsenzioni", Mask::Health},
    {"flagPatologia", Mask::Health},
    {"flagEsenzionePatologia", Mask::Health},
    {"quesitoDiagnostico", Mask::Health},
    {"notaPrescrizione", Mask::Health},
    {"codicePrestazione", Mask::Health},
    {"descrizionePrestazione", Mask::Health},
    {"posologiaPrestazione", Mask::Health},
    {"notaCufPrestazione", Mask::Health},
    {"notaPrestazione", Mask::Health},
    {"codiceDiagnosi", Mask::Health},
    {"noteDiagnosi", Mask::Health},
});

constexpr std::array addresses = std::to_array<std::string_view>({
    "http://schemas.xmlsoap.org/soap/envelope/",
    "http://www.w3.org/2003/05/soap-envelope",
    "urn:siss:ICCE",
    "urn:siss:GSSC",
    "urn:siss:GCM",
});

// In the order of the enumeration.
constexpr std::array<std::string_view, maskCount> maskNames = {
    "",
    "codici fiscali",
    "numeri di tessera e di assistito",
    "cognomi",
    "nomi",
    "date di cui resta solo l'anno",
    "indirizzi e luoghi",
    "dati sanitari (diagnosi, esenzioni, prestazioni, note)",
    "testi scritti dal SISS",
    "messaggi che non sono XML",
    "valori tra virgolette e testi dietro un codice, nelle tracce",
    "dati dei pazienti trovati altrove",
    "nomi di postazioni",
    "altri valori",
};

} // namespace

Mask MaskOfElement(std::string_view name) noexcept
{
    const auto local = name.substr(name.find(':') + 1);
    const auto* const row = std::ranges::find(elements, local, &ElementRow::name);
    return row == elements.end() ? Mask::Other : row->mask;
}

bool IsHarmlessAttribute(std::string_view name, std::string_view value) noexcept
{
    return (name.starts_with("xmlns") && std::ranges::find(addresses, value) != addresses.end()) ||
           (name == "dataSetVersion" && IsCodeLike(value));
}

bool IsCodeLike(std::string_view value) noexcept
{
    constexpr std::size_t longest = 64;
    constexpr std::string_view others = "._-:/+";
    return value.size() <= longest && !IsFiscalCode(value) &&
           std::ranges::all_of(
               value, [&](char each)
               { return host::IsLetter(each) || host::IsDigit(each) || others.find(each) != std::string_view::npos; });
}

bool IsFiscalCode(std::string_view value) noexcept
{
    constexpr std::string_view pattern = "AAAAAA00A00A000A";
    constexpr std::string_view inPlaceOfDigits = "LMNPQRSTUV";
    const auto matches = [&](char each, char should)
    {
        const bool isLetter = host::IsLetter(each);
        return should == 'A' ? isLetter
                             : host::IsDigit(each) || inPlaceOfDigits.find(host::Upper(each)) != std::string_view::npos;
    };
    return value.size() == pattern.size() && std::equal(value.begin(), value.end(), pattern.begin(), matches);
}

std::string_view NameOf(Mask mask) noexcept
{
    return maskNames.at(static_cast<std::size_t>(mask));
}

} // namespace vellumo::diagnosi
