#include "diagnosi/replay/prescription_seed.h"

#include "diagnosi/support/mask_table.h"
#include "host/text.h"

#include <algorithm>
#include <array>

namespace vellumo::diagnosi
{
namespace
{

constexpr int mostPatients = 40; // of the simulated practice
constexpr std::size_t drugsOnAForm = 2;
constexpr const char* itemPath = "datiSensibiliPrescrizione/elencoPrestazioni/prestazione";
constexpr const char* ownRegion = "030";
constexpr std::size_t regionPart = 3; // characters of the code of an ASL

// What the request says of the exemption comes of these columns.
struct Exemption
{
    std::string group;
    int type = 1;
    bool isInvalidity = false;
};

// Empty when no exemption makes these flags.
std::optional<Exemption> ExemptionOf(const xml::Node& sensitive, bool isDrug)
{
    const bool other = sensitive.Text("flagAltreEsenzioni") == "S";
    const bool pathology = sensitive.Text("flagPatologia") == "S";
    const std::string disease = sensitive.Text("flagEsenzionePatologia");
    Exemption exemption;
    if (disease.starts_with(maskedBeginning)) // none is as good as any
    {
        return exemption;
    }
    exemption.group = pathology ? "P" : other && disease == "N" ? "R" : "";
    exemption.type = disease == "R" ? 7 : disease == "N" ? 1 : 3;
    if (pathology && other && disease == "N")
    {
        exemption.type = 6;
        exemption.isInvalidity = true;
    }
    const bool known = isDrug ? disease == "A" || disease == "R" || disease == "N"
                              : (disease == "S" || disease == "N") && !exemption.isInvalidity;
    return known && (disease == "N" || other) ? std::optional(exemption) : std::nullopt;
}

struct Priority
{
    std::string_view code; // campoPriorita
    const char* id;
};

constexpr std::array<Priority, 4> priorities = {{{"U", "1"}, {"B", "2"}, {"D", "3"}, {"P", "4"}}};

std::string PriorityOf(const xml::Node& administrative)
{
    const auto* const row = std::ranges::find(priorities, administrative.Text("campoPriorita"), &Priority::code);
    return row == priorities.end() ? "NULL" : row->id;
}

// A masked one counts as 0.
std::string NumberOrNull(const std::string& text)
{
    if (text.starts_with(maskedBeginning))
    {
        return "0";
    }
    return !text.empty() && std::ranges::all_of(text, host::IsDigit) ? text : "NULL";
}

std::string LiteralOrNull(const std::string& text)
{
    return text.empty() ? "NULL" : Literal(text);
}

// A note stands once in the practice, and in the request at each item, too.
bool HasOneNote(const std::vector<xml::Node>& items, std::string_view note)
{
    return std::ranges::all_of(items, [&](const xml::Node& item) { return item.Text("notaPrestazione") == note; });
}

std::string NoteOf(const xml::Node& prescription, const std::vector<xml::Node>& items, bool isDrug)
{
    return isDrug          ? prescription.Text("datiSensibiliPrescrizione/notaPrescrizione")
           : items.empty() ? ""
                           : items.front().Text("notaPrestazione");
}

// `suffix`: the drug's number on the form. Class C is what makes a form repeatable, together with its grouping.
void AddDrug(const xml::Node& item, const std::string& suffix, bool isRepeatable, NewRow& row)
{
    row.insert(row.end(), {{"CodiceAIC" + suffix, Literal(item.Text("codicePrestazione"))},
                           {"Farmaco" + suffix, Literal(item.Text("descrizionePrestazione"))},
                           {"Quantita" + suffix, Literal(item.Text("quantitaPrestazione"))},
                           {"Classe" + suffix, isRepeatable ? "'C'" : "'A'"},
                           {"Posologia" + suffix, Literal(item.Text("posologiaPrestazione"))},
                           {"NotaCuf" + suffix, Literal(item.Text("notaCufPrestazione"))}});
}

std::string WhyNot(const xml::Node& prescription, bool isDrug)
{
    const auto administrative = prescription.Select("datiAmministrativiPrescrizione");
    const auto items = prescription.SelectAll(itemPath);
    const bool suggested = administrative.Text("flagSuggerita") == "S";
    const bool inRegion = administrative.Text("codiceAslAssistenza").starts_with(ownRegion);
    if (!ExemptionOf(prescription.Select("datiSensibiliPrescrizione"), isDrug))
    {
        return "its flags of exemptions";
    }
    if (items.empty() || (isDrug && items.size() > drugsOnAForm))
    {
        return "its items";
    }
    if (!HasOneNote(items, NoteOf(prescription, items, isDrug)))
    {
        return "its notes";
    }
    if (inRegion != (administrative.Text("flagFuoriRegione") == "N"))
    {
        return "its ASL";
    }
    if (suggested && administrative.Text("flagOspedaliera") == "S")
    {
        return "the kind of request";
    }
    return NumberOrNull(administrative.Text("etaCittadino")) == "NULL" ? "the patient's age" : "";
}

} // namespace

std::optional<int> PrescriptionSeed::Make(const xml::Node& data, bool isDrug, std::string& why)
{
    const auto prescription = data.Select("nuovaPrescrizione");
    why = WhyNot(prescription, isDrug);
    if (!why.empty())
    {
        return std::nullopt;
    }
    const int patient = PatientOf(prescription.Select("datiAmministrativiPrescrizione"));
    if (patient > mostPatients)
    {
        why = "more than " + std::to_string(mostPatients) + " patients";
        return std::nullopt;
    }
    const int form = ++m_forms;
    MakeRow(prescription, isDrug, form, patient);
    return form;
}

int PrescriptionSeed::PatientOf(const xml::Node& administrative)
{
    std::string all;
    for (const auto* const element :
         {"codiceFiscaleCittadino", "cognomeCittadino", "nomeCittadino", "sessoCittadino", "dataNascitaCittadino",
          "codiceAslAssistenza", "siglaProvinciaAssistenza", "indirizzoDomicilioCittadino", "civicoDomicilioCittadino",
          "comuneDomicilioCittadino"})
    {
        all += administrative.Text(element) + '\n';
    }
    const auto known = std::ranges::find(m_patients, all);
    const int patient = static_cast<int>(known - m_patients.begin()) + 1;
    if (known != m_patients.end() || patient > mostPatients)
    {
        return patient;
    }
    m_patients.push_back(all);
    m_practice.MakePatient(patient,
                           {administrative.Text("codiceFiscaleCittadino"), administrative.Text("cognomeCittadino"),
                            administrative.Text("nomeCittadino"), administrative.Text("sessoCittadino"),
                            administrative.Text("dataNascitaCittadino")});
    m_practice.Settle(patient, host::ResidenceKind::Residence,
                      administrative.Text("indirizzoDomicilioCittadino") + ", " +
                          administrative.Text("civicoDomicilioCittadino"),
                      {.istat = "",
                       .name = administrative.Text("comuneDomicilioCittadino"),
                       .cap = "",
                       .province = administrative.Text("siglaProvinciaAssistenza")});
    const auto asl = administrative.Text("codiceAslAssistenza");
    if (!asl.empty())
    {
        m_out.Sql("INSERT INTO Norda..Regione (Regione, CodiceRegione) VALUES",
                  "('', " + Literal(host::FirstCharacters(asl, regionPart)) + ")");
        m_out.Sql("INSERT INTO Norda..Asl (ASL, NumeroASL, IDRegione) VALUES",
                  "('', " + Literal(asl.substr(std::min(regionPart, asl.size()))) +
                      ", (SELECT MAX(IDRegione) FROM Norda..Regione))");
    }
    m_out.Sql(
        "UPDATE Paziente SET IDASL = " + std::string(asl.empty() ? "NULL" : "(SELECT MAX(IDAsl) FROM Norda..Asl)") +
        " WHERE IDPaziente = " + std::to_string(patient));
    return patient;
}

void PrescriptionSeed::MakeRow(const xml::Node& prescription, bool isDrug, int form, int patient) const
{
    const auto administrative = prescription.Select("datiAmministrativiPrescrizione");
    const auto sensitive = prescription.Select("datiSensibiliPrescrizione");
    const auto items = prescription.SelectAll(itemPath);
    const auto exemption = *ExemptionOf(sensitive, isDrug);
    const auto income = sensitive.Text("progrAutocertReddito");
    Insert("Norda..Esenzione",
           {{"CodiceIdentificativo", Literal(income.empty() ? sensitive.Text("codiceEsenzione") : "%")},
            {"Esenzione", "''"},
            {"IDTipoEsenzione", std::to_string(exemption.type)},
            {"EsenzioneInvalidita", exemption.isInvalidity ? "1" : "0"}});
    const bool isRepeatable = administrative.Text("flagRipetibile") == "S";
    const bool isSuggested = administrative.Text("flagSuggerita") == "S";
    const bool isHospital = administrative.Text("flagOspedaliera") == "S";
    NewRow row = {{"IDRicetta", std::to_string(form)},
                  {"NumRicetta", "1"},
                  {"IDPaziente", std::to_string(patient)},
                  {"DataRicetta", "'2024-01-01 00:00:00'"},
                  {"EtaPaziente", NumberOrNull(administrative.Text("etaCittadino"))},
                  {"TipoRicetta", Literal(administrative.Text("naturaPrescrizione"))},
                  {"IDFormatoRicetta", administrative.Text("tipoModulo") == "PERSONALE" ? "2" : "1"},
                  {"IDTipoRichiesta", isSuggested  ? "3"
                                      : isHospital ? "2"
                                                   : "1"},
                  {"IDPrioritaRicetta", PriorityOf(administrative)},
                  {"TipoRaggruppamento", isRepeatable ? "1" : "0"},
                  {"IDPartecipazioneSpesa", "(SELECT MAX(IDEsenzione) FROM Norda..Esenzione)"},
                  {"GruppoEsenzione", LiteralOrNull(exemption.group)},
                  {"NumeroEsenzione", LiteralOrNull(income)},
                  {"Annotazioni", LiteralOrNull(NoteOf(prescription, items, isDrug))},
                  {"MotivoRicetta", LiteralOrNull(sensitive.Text("quesitoDiagnostico"))}};
    for (std::size_t item = 0; isDrug && item < items.size(); ++item)
    {
        AddDrug(items[item], "_" + std::to_string(item + 1), isRepeatable, row);
    }
    Insert("Ricetta", row);
    for (std::size_t item = 0; !isDrug && item < items.size(); ++item)
    {
        Insert("RicettaPrestazione", {{"IDRicetta", std::to_string(form)},
                                      {"NumRicetta", "1"},
                                      {"Codice", Literal(items[item].Text("codicePrestazione"))},
                                      {"Prestazione", Literal(items[item].Text("descrizionePrestazione"))},
                                      {"Quantita", NumberOrNull(items[item].Text("quantitaPrestazione"))}});
    }
    Insert("RicettaSSN", {{"IDRicetta", std::to_string(form)},
                          {"NumRicetta", "1"},
                          {"IDMenuItem", isDrug ? "80" : "79"},
                          {"Annullata", "0"}});
}

void PrescriptionSeed::Insert(const std::string& table, const NewRow& row) const
{
    std::string columns;
    std::string values;
    for (const auto& [column, value] : row)
    {
        columns.append(columns.empty() ? "" : ", ").append(column);
        values.append(values.empty() ? "(" : ", ").append(value);
    }
    m_out.Sql("INSERT INTO " + table + " (" + columns + ") VALUES", values + ")");
}

} // namespace vellumo::diagnosi
