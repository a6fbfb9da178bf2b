#include "prescription/payload.h"

#include "environment/siss_date_time.h"
#include "host/fault.h"
#include "host/text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vellumo::prescription
{
namespace
{

using host::kindDrugs;
using host::kindTests;
using host::OpzioniRicetta;
using host::Value;
using service::ServiceRequest;

constexpr std::string_view administrative = "nuovaPrescrizione/datiAmministrativiPrescrizione/";
constexpr std::string_view sensitive = "nuovaPrescrizione/datiSensibiliPrescrizione/";
constexpr const char* yes = "S";
constexpr const char* no = "N";

// Sets one element below the part of the request that the writer fills.
class Writer
{
public:
    Writer(ServiceRequest& request, std::string_view part)
        : m_request(request)
        , m_part(part)
    {
    }
    void Set(std::string_view element, const Value& value) const
    {
        m_request.SetData(std::string(m_part).append(element), value);
    }

private:
    ServiceRequest& m_request;
    std::string_view m_part;
};

// Street and house number. The host keeps them in one text with a comma between.
std::pair<std::string, std::string> SplitAddress(std::string_view address)
{
    const auto comma = address.find(',');
    if (comma == std::string_view::npos)
    {
        throw host::Fault("L'indirizzo del paziente \"" + std::string(address) +
                          "\" non contiene la virgola che separa la via dal numero civico.");
    }
    const auto rest = address.substr(comma + 1);
    const auto street = host::Trimmed(address.substr(0, comma), " ");
    const auto number = host::Trimmed(rest.substr(0, rest.find(',')), " ");
    return {std::string(street), std::string(number)};
}

// --- Exemptions ---

struct ExemptionGroup
{
    std::string_view group; // PS_GruppoEsenzione
    const char* flagAltreEsenzioni;
    const char* flagPatologia;
};

constexpr std::array<ExemptionGroup, 4> exemptionGroups = {{
    {"R", yes, ""},
    {"Z", yes, ""},
    {"P", "", yes},
    {"Y", "", yes},
}};

bool HasValidExemption(const RicettaRecord& record, const host::HostServices& services)
{
    constexpr std::int32_t noExpiry = 2; // 1 January 1900
    const Value expiry = services.RequireUtils().SingleValue(
        "SELECT Scadenza FROM EsenzionePerPaziente WHERE IDPaziente = {0} AND IDEsenzione = {1} "
        "AND {2} > DataEsenzione AND {2} < Scadenza",
        {record.Get(ricetta::idPaziente), record.Get(ricetta::idPartecipazioneSpesa),
         record.Get(ricetta::dataRicetta)});
    return !expiry.IsNull() && expiry.ToDate().DayNumber() != noExpiry;
}

void WriteExemptionGroup(const RicettaRecord& record, const Writer& writer, const host::HostServices& services)
{
    const auto* row =
        std::ranges::find(exemptionGroups, record.Text(ricetta::psGruppoEsenzione), &ExemptionGroup::group);
    const bool listed = row != exemptionGroups.end();
    writer.Set("flagAltreEsenzioni",
               listed ? row->flagAltreEsenzioni : (HasValidExemption(record, services) ? yes : ""));
    writer.Set("progrAutocertReddito", "");
    writer.Set("flagPatologia", listed ? row->flagPatologia : "");
}

struct DiseaseFlag
{
    std::int32_t kind;
    std::int32_t type; // IDTipoEsenzione
    const char* flag;
};

constexpr std::array<DiseaseFlag, 5> diseaseFlags = {{
    {kindDrugs, 3, "A"},
    {kindDrugs, 7, "R"},
    {kindTests, 3, "S"},
    {kindTests, 6, "S"},
    {kindTests, 7, "S"},
}};

const char* DiseaseFlagOf(const RicettaRecord& record, std::int32_t kind)
{
    const std::int32_t type = record.Integer(ricetta::idTipoEsenzione);
    const auto* row = std::ranges::find_if(diseaseFlags, [&](const DiseaseFlag& entry)
                                           { return entry.kind == kind && entry.type == type; });
    if (row != diseaseFlags.end())
    {
        return row->flag;
    }
    return record.Text(ricetta::psGruppoEsenzione) != "Y" ? no : kind == kindDrugs ? "A" : "S";
}

void WriteDiseaseFlag(const RicettaRecord& record, const Writer& writer, std::int32_t kind)
{
    const std::string_view flag = DiseaseFlagOf(record, kind);
    writer.Set("flagEsenzionePatologia", flag);
    if (flag != no)
    {
        writer.Set("flagAltreEsenzioni", yes);
    }
}

bool IsInvalid(const RicettaRecord& record, const host::HostServices& services)
{
    constexpr std::int32_t invalidity = 6;
    const auto rows = services.RequireUtils().OpenRecordset(
        "SELECT * FROM VwPartecipazioneSpesa WHERE IDEsenzione = {0}", {record.Get(ricetta::idPartecipazioneSpesa)});
    return !rows->IsAtEnd() && rows->Field("EsenzioneInvalidita").ToBoolean() &&
           rows->Field("IDTipoEsenzione").ToInteger() == invalidity;
}

void WriteExemptionCode(const RicettaRecord& record, const Writer& writer, const host::HostServices& services)
{
    const std::string local = record.Text(ricetta::psCodiceIdentificativo);
    if (local == "%") // exempt by a declaration of income of one's own
    {
        writer.Set("codiceEsenzione", "");
        writer.Set("progrAutocertReddito", record.Get(ricetta::numeroEsenzione));
        return;
    }
    const std::string siss = services.RequireUtils()
                                 .SingleValue("SELECT Codice FROM Norda..SISS_Esenzione WHERE IDEsenzione = {0}",
                                              {record.Get(ricetta::idPartecipazioneSpesa)})
                                 .ToText();
    writer.Set("codiceEsenzione", siss.empty() ? local : siss);
}

// --- Administrative flags ---

struct Priority
{
    std::int32_t id; // IDPrioritaRicetta
    const char* flagUrgenza;
    const char* campoPriorita;
};

constexpr std::array<Priority, 4> priorities = {{
    {1, yes, "U"},
    {2, "", "B"},
    {3, "", "D"},
    {4, "", "P"},
}};

void WriteAdministrativeFlags(const RicettaRecord& record, const Writer& writer)
{
    constexpr std::int32_t personalForm = 2;
    constexpr std::int32_t suggestedRequest = 3;
    writer.Set("naturaPrescrizione", record.Get(ricetta::tipoRicetta));
    writer.Set("flagFuoriRegione",
               record.Text(ricetta::codiceRegioneAsl) == record.Text(ricetta::codiceRegioneTariffario) ? no : yes);
    writer.Set("tipoModulo", record.Integer(ricetta::idFormatoRicetta) == personalForm ? "PERSONALE" : "RUR09");
    writer.Set("flagSuggerita", record.Integer(ricetta::idTipoRichiesta) == suggestedRequest ? yes : "");
    const auto* row = std::ranges::find(priorities, record.Integer(ricetta::idPrioritaRicetta), &Priority::id);
    if (row != priorities.end())
    {
        writer.Set("flagUrgenza", row->flagUrgenza);
        writer.Set("campoPriorita", row->campoPriorita);
    }
}

// A form of class C drugs can be repeated when its drugs are grouped. The class counts in upper case only.
bool IsRepeatable(const RicettaRecord& record)
{
    if (record.Integer(ricetta::trTipoRaggruppamento) != 1)
    {
        return false;
    }
    for (std::int32_t item = 1; item <= record.DetailCount(); ++item)
    {
        if (record.GetItem(ricetta::itemClasse, item).ToText() == "C")
        {
            return true;
        }
    }
    return false;
}

void WriteKindOfPrescription(const RicettaRecord& record, ServiceRequest& request, std::int32_t kind)
{
    constexpr std::size_t longestQuestion = 100;
    constexpr std::int32_t hospitalRequest = 2;
    const Writer flags(request, administrative);
    const Writer notes(request, sensitive);
    if (kind == kindDrugs)
    {
        flags.Set("flagRipetibile", IsRepeatable(record) ? yes : no);
        notes.Set("notaPrescrizione", record.Get(ricetta::annotazioni));
        flags.Set("tipologiaPrescrizione", "01");
    }
    else if (kind == kindTests)
    {
        flags.Set("flagRipetibile", no);
        notes.Set("quesitoDiagnostico", host::FirstCharacters(record.Text(ricetta::motivoRicetta), longestQuestion));
        const bool hospital = record.Integer(ricetta::idTipoRichiesta) == hospitalRequest;
        flags.Set("tipologiaPrescrizione", hospital ? "03" : "02");
        if (hospital)
        {
            flags.Set("flagOspedaliera", yes);
        }
    }
}

// --- Items ---

std::string WithoutLeadingZeros(const std::string& note)
{
    const auto first = note.find_first_not_of('0');
    return first == std::string::npos ? std::string() : note.substr(first);
}

std::string QuantityText(const Value& quantity, std::int32_t kind)
{
    const double number = quantity.ToNumber();
    return kind == kindTests && number == 0 ? std::string() : Value(number).ToText();
}

} // namespace

void WriteDatiCittadino(const RicettaRecord& record, ServiceRequest& request)
{
    const Writer writer(request, administrative);
    writer.Set("codiceFiscaleCittadino", record.Get(ricetta::pazCodiceFiscale));
    writer.Set("cognomeCittadino", record.Get(ricetta::pazCognome));
    writer.Set("nomeCittadino", record.Get(ricetta::pazNome));
    writer.Set("sessoCittadino", record.Get(ricetta::pazSesso));
    writer.Set("dataNascitaCittadino", environment::StoredDate(record.Get(ricetta::pazDataNascita)));
    writer.Set("etaCittadino", record.Get(ricetta::pazEta));
    writer.Set("codiceAslAssistenza", record.Text(ricetta::codiceRegioneAsl) + record.Text(ricetta::numeroAsl));
    writer.Set("siglaProvinciaAssistenza", record.Get(ricetta::siglaProvinciaAsl));
    const auto [street, number] = SplitAddress(record.Text(ricetta::pazIndirizzo));
    writer.Set("indirizzoDomicilioCittadino", street);
    writer.Set("civicoDomicilioCittadino", number);
    writer.Set("comuneDomicilioCittadino", record.Get(ricetta::pazComune));
}

void WriteDatiPrescrizione(const RicettaRecord& record, ServiceRequest& request, std::int32_t kind,
                           const host::HostServices& services)
{
    const Writer exemption(request, sensitive);
    WriteExemptionGroup(record, exemption, services);
    WriteDiseaseFlag(record, exemption, kind);
    if (kind == kindDrugs && IsInvalid(record, services))
    {
        exemption.Set("flagAltreEsenzioni", yes);
    }
    WriteExemptionCode(record, exemption, services);
    WriteAdministrativeFlags(record, Writer(request, administrative));
    WriteKindOfPrescription(record, request, kind);
}

void WriteElencoPrestazioni(const RicettaRecord& record, ServiceRequest& request, std::int32_t kind)
{
    const xml::Node list = request.Data().Select(std::string(sensitive) + "elencoPrestazioni");
    const xml::Node pattern = list.Select("prestazione");
    if (!pattern)
    {
        // Without its items a prescription must not go out.
        throw host::Fault(
            "Il modello della richiesta di registrazione non ha l'elemento elencoPrestazioni/prestazione.");
    }
    for (std::int32_t item = 1; item <= record.DetailCount(); ++item)
    {
        const std::string code = record.GetItem(ricetta::itemCodice, item).ToText();
        if (code.empty())
        {
            continue;
        }
        const xml::Node entry = pattern.Clone();
        entry.Select("codicePrestazione").SetText(code);
        entry.Select("descrizionePrestazione").SetText(record.GetItem(ricetta::itemDescrizione, item).ToText());
        entry.Select("posologiaPrestazione").SetText(record.GetItem(ricetta::itemPosologia, item).ToText());
        entry.Select("notaCufPrestazione")
            .SetText(WithoutLeadingZeros(record.GetItem(ricetta::itemNotaCuf, item).ToText()));
        entry.Select("notaPrestazione").SetText(record.GetItem(ricetta::itemAnnotazione, item).ToText());
        entry.Select("quantitaPrestazione").SetText(QuantityText(record.GetItem(ricetta::itemQuantita, item), kind));
        list.Append(entry);
    }
    pattern.Remove();
}

void WriteOpzioni(const OpzioniRicetta& options, ServiceRequest& request)
{
    WriteDataSetVersion(options, request);
    const Writer writer(request, administrative);
    if (options.TipoRicetta == OpzioniRicetta::electronic)
    {
        if (options.ModalitaStampa == host::oreStampaPromemoria || options.ModalitaStampa == host::oreNessuna)
        {
            writer.Set("flagAltro", options.ModalitaStampa == host::oreStampaPromemoria ? "1" : "2");
        }
    }
    else if (options.TipoRicetta == OpzioniRicetta::paperForm)
    {
        writer.Set("flagAltro", no);
        if (options.ModalitaStampa == OpzioniRicetta::printedBySiss ||
            options.ModalitaStampa == OpzioniRicetta::printedByHost)
        {
            writer.Set("stampaRicetta", options.ModalitaStampa == OpzioniRicetta::printedBySiss ? "SI" : "NO");
        }
    }
}

void WriteDataSetVersion(const OpzioniRicetta& options, ServiceRequest& request)
{
    constexpr std::string_view version = "@dataSetVersion";
    if (options.TipoRicetta == OpzioniRicetta::electronic)
    {
        request.SetData(version, "2.0");
    }
    else
    {
        request.Data().Select(version).Remove();
    }
}

} // namespace vellumo::prescription
