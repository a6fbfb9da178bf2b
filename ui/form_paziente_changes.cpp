#include "ui/form_paziente_changes.h"

#include "ui/whom.h"

#include <algorithm>
#include <array>
#include <utility>
#include <variant>

namespace vellumo::ui
{
namespace
{

constexpr Colour changedBackground = 0xFFF2CC;
constexpr Colour addedBackground = 0xE2F0D9;
constexpr Colour removedBackground = 0xFBE3E0;

struct Field
{
    const char* name;
    const char* caption;
    bool identifies = false; // tells one person from another
};

constexpr std::array fields = {
    Field{"CodiceFiscale", "Codice Fiscale", true},
    Field{"Cognome", "Cognome", true},
    Field{"Nome", "Nome", true},
    Field{"Sesso", "Sesso"},
    Field{"DataNascita", "Data di nascita", true},
    Field{"ComuneNascita", "Comune di nascita"},
    Field{"NumTesseraSanitaria", "Numero tessera Sanitaria"},
    Field{"NumAssistito", "Numero Assistito"},
    Field{"CodiceRegioneAsl", "Codice Regione Asl"},
    Field{"CodiceAsl", "Codice Asl"},
};

host::Value Get(const NamedValues& values, const std::string& name)
{
    const auto found = values.find(name);
    return found == values.end() ? host::Value() : found->second;
}

std::string DisplayText(const host::Value& value)
{
    const auto* const date = std::get_if<host::Date>(&value.Get());
    return date == nullptr || date->IsZero() ? value.ToText() : date->ToDayText();
}

Whom WhomOf(const NamedValues& values)
{
    const host::Value born = Get(values, "DataNascita");
    const auto* const date = std::get_if<host::Date>(&born.Get());
    return {.cognome = Get(values, "Cognome").ToText(),
            .nome = Get(values, "Nome").ToText(),
            .sesso = Get(values, "Sesso").ToText(),
            .dataNascita = date == nullptr ? host::Date() : *date,
            .codiceFiscale = Get(values, "CodiceFiscale").ToText()};
}

std::string Count(int count, const char* one, const char* many)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

std::string Shown(const std::string& text)
{
    return text.empty() ? "(nessun valore)" : text;
}

bool Has(const std::vector<ComparedExemption>& exemptions, std::int32_t id)
{
    return std::ranges::find(exemptions, id, &ComparedExemption::IDEsenzione) != exemptions.end();
}

std::int32_t Bit(const CheckBox& box, std::int32_t bit)
{
    return box.checked ? bit : 0;
}

} // namespace

std::string ComparedAddress::Text() const
{
    std::string text = indirizzo;
    const std::string town = cap + (cap.empty() || comune.empty() ? "" : " ") + comune;
    return text + (text.empty() || town.empty() ? "" : ", ") + town;
}

FormPazienteChanges::FormPazienteChanges(const ComparedPatient& paziente, const ComparedPatient& cittadino,
                                         std::int32_t changes, Desktop& desktop)
    : Form("Confronto con l'anagrafica SISS")
    , m_changes(changes)
    , m_desktop(desktop)
    , m_cittadino("")
    , m_paziente("")
    , m_riepilogo("")
    , m_campi("&Dati anagrafici")
    , m_indirizzi("Res&idenza e domicilio")
    , m_esenzioni("")
    , m_dettagli("De&ttagli della riga selezionata")
    , m_chkAnagrafica("Aggiorna i dati &anagrafici")
    , m_seAnagrafica("")
    , m_indirizziSempre("Aggiorna residenza e domicilio")
    , m_seIndirizzi("")
    , m_chkEsenzioni("Aggiorna le &esenzioni")
    , m_seEsenzioni("")
    , m_chkRimuoviEsenzioni("&Rimuovi prima tutte le esenzioni locali")
    , m_seRimuovi("")
    , m_conferma("&Conferma")
    , m_annulla("A&nnulla")
{
    m_chkAnagrafica.checked = (changes & update::personalData) != 0;
    m_chkEsenzioni.checked = (changes & update::exemptions) != 0;
    m_chkRimuoviEsenzioni.checked = (changes & update::deleteExemptions) != 0;
    NameBoth(paziente, cittadino);
    FillFields(paziente.values, cittadino.values);
    FillAddresses(paziente, cittadino);
    FillExemptions(paziente, cittadino);
    Summarize();
    SelectFirstDifference();
    Explain();
    LayOut();
}

void FormPazienteChanges::LayOut()
{
    m_cittadino.strong = true;
    m_paziente.strong = true;
    m_campi.columns = {
        {"CAMPO", "Nome Campo", 2400}, {"VALORE_1", "Anagrafica Locale", 4200}, {"VALORE_2", "Anagrafica SISS", 4200}};
    m_campi.visibleRows = static_cast<int>(fields.size());
    m_indirizzi.columns = {
        {"CAMPO", "Indirizzo", 2400}, {"VALORE_1", "Anagrafica Locale", 4200}, {"VALORE_2", "Anagrafica SISS", 4200}};
    m_indirizzi.visibleRows = 2;
    m_esenzioni.columns = {
        {"ESENZIONE", "Esenzione", 1400}, {"DESCRIZIONE", "Descrizione", 7600}, {"STATO", "Stato", 1600}};
    m_esenzioni.visibleRows = 3;
    m_dettagli.readOnly = true;
    m_dettagli.lines = 3;
    m_indirizziSempre.checked = true;
    m_indirizziSempre.enabled = false;
    for (auto [box, effect] :
         {std::pair{&m_chkAnagrafica, &m_seAnagrafica}, std::pair{&m_indirizziSempre, &m_seIndirizzi},
          std::pair{&m_chkEsenzioni, &m_seEsenzioni}, std::pair{&m_chkRimuoviEsenzioni, &m_seRimuovi}})
    {
        box->explanation = effect;
        effect->sameLine = true;
    }
    m_conferma.isDefault = true;
    m_annulla.sameLine = true;
    m_annulla.isCancel = true;
    m_controls = {&m_cittadino,    &m_paziente,
                  &m_riepilogo,    &m_campi,
                  &m_indirizzi,    &m_esenzioni,
                  &m_dettagli,     &m_chkAnagrafica,
                  &m_seAnagrafica, &m_indirizziSempre,
                  &m_seIndirizzi,  &m_chkEsenzioni,
                  &m_seEsenzioni,  &m_chkRimuoviEsenzioni,
                  &m_seRimuovi,    &m_conferma,
                  &m_annulla};
    m_initialFocus = &m_conferma;
    m_designSize = {11400, 9900};
}

void FormPazienteChanges::NameBoth(const ComparedPatient& paziente, const ComparedPatient& cittadino)
{
    m_cittadino.text = "Cittadino SISS: " + Describe(WhomOf(cittadino.values));
    m_paziente.text = "Paziente locale: " + Describe(WhomOf(paziente.values)) + " (trovato per " +
                      (paziente.foundByCard ? "tessera sanitaria)" : "codice fiscale)");
}

bool FormPazienteChanges::AddCompared(Grid& grid, const std::string& caption, const std::string& local,
                                      const std::string& siss)
{
    const bool differs = local != siss;
    Row row = {Cell{caption}, Cell{local}, Cell{siss}};
    for (Cell& cell : row)
    {
        if (differs)
        {
            cell.background = changedBackground;
            cell.strong = true;
        }
    }
    grid.rows.push_back(std::move(row));
    return differs;
}

void FormPazienteChanges::FillFields(const NamedValues& paziente, const NamedValues& cittadino)
{
    for (const Field& field : fields)
    {
        const bool differs = AddCompared(m_campi, field.caption, DisplayText(Get(paziente, field.name)),
                                         DisplayText(Get(cittadino, field.name)));
        m_differences.fields += differs ? 1 : 0;
        m_differences.otherPerson = m_differences.otherPerson || (differs && field.identifies);
    }
    const host::Value revoked = Get(cittadino, "Revocato");
    if (!revoked.IsNull() && (revoked.ToInteger() != 0) != (Get(paziente, "Revocato").ToInteger() != 0))
    {
        m_differences.nowRevoked = revoked.ToInteger() != 0;
    }
}

void FormPazienteChanges::FillAddresses(const ComparedPatient& paziente, const ComparedPatient& cittadino)
{
    const auto add = [&](const char* caption, const ComparedAddress& local, const ComparedAddress& siss)
    { m_differences.addresses += AddCompared(m_indirizzi, caption, local.Text(), siss.Text()) ? 1 : 0; };
    add("Residenza", paziente.residence, cittadino.residence);
    add("Domicilio", paziente.domicile, cittadino.domicile);
}

// Two exemptions are the same when their local one is.
void FormPazienteChanges::FillExemptions(const ComparedPatient& paziente, const ComparedPatient& cittadino)
{
    m_differences.local = static_cast<int>(paziente.exemptions.size());
    for (const ComparedExemption& exemption : paziente.exemptions)
    {
        if (!Has(cittadino.exemptions, exemption.IDEsenzione))
        {
            ++m_differences.localOnly;
            AddExemption(exemption, {.text = "Da Eliminare", .background = removedBackground, .strong = true},
                         "Il SISS non ne riporta una corrispondente. Viene eliminata solo con la spunta a "
                         "\"Rimuovi prima tutte le esenzioni locali\".");
        }
    }
    for (const ComparedExemption& exemption : cittadino.exemptions)
    {
        if (exemption.lost)
        {
            ++m_differences.lost;
            AddExemption(exemption, {.text = "Da Riassegnare", .background = removedBackground, .strong = true},
                         "L'esenzione locale a cui è assegnata non esiste più: non viene salvata. Per assegnarne "
                         "un'altra annullare e identificare di nuovo il paziente.");
        }
        else if (Has(paziente.exemptions, exemption.IDEsenzione))
        {
            ++m_differences.both;
        }
        else
        {
            ++m_differences.sissOnly;
            AddExemption(exemption, {.text = "Da Inserire", .background = addedBackground, .strong = true},
                         "Il paziente non l'ha ancora. Viene inserita con la spunta ad \"Aggiorna le esenzioni\".");
        }
    }
    m_esenzioni.text = "E&senzioni diverse (" + std::to_string(m_esenzioni.rows.size()) + ")";
}

void FormPazienteChanges::AddExemption(const ComparedExemption& exemption, const Cell& state, const std::string& detail)
{
    m_esenzioni.rows.push_back({Cell{exemption.Codice}, Cell{exemption.Descrizione}, state});
    m_exemptionDetails.push_back(exemption.Codice + " - " + exemption.Descrizione + "\r\n" + state.text + ": " +
                                 detail);
}

void FormPazienteChanges::Summarize()
{
    std::string parts;
    const auto add = [&](int count, const char* one, const char* many)
    {
        if (count > 0)
        {
            parts += (parts.empty() ? "" : ", ") + Count(count, one, many);
        }
    };
    add(m_differences.fields, "dato anagrafico", "dati anagrafici");
    add(m_differences.addresses, "indirizzo", "indirizzi");
    add(static_cast<int>(m_esenzioni.rows.size()), "esenzione", "esenzioni");
    m_riepilogo.text = parts.empty() ? "Nessuna differenza: i dati locali corrispondono a quelli del SISS."
                                     : "Differenze con il SISS (in grassetto): " + parts + ".";
}

// So that the window opens with something to read in its details.
void FormPazienteChanges::SelectFirstDifference()
{
    for (Grid* const grid : {&m_campi, &m_indirizzi, &m_esenzioni})
    {
        const auto first = std::ranges::find_if(grid->rows, [](const Row& row) { return row.back().strong; });
        if (first != grid->rows.end())
        {
            grid->selected = static_cast<std::size_t>(first - grid->rows.begin());
            ShowDetails(*grid);
            return;
        }
    }
    m_dettagli.value = "Scegliere una riga per leggerne qui i valori per intero.";
}

void FormPazienteChanges::ShowDetails(const Grid& grid)
{
    if (!grid.selected)
    {
        return;
    }
    const Row& row = grid.rows.at(*grid.selected);
    m_dettagli.value = &grid == &m_esenzioni ? m_exemptionDetails.at(*grid.selected)
                                             : row[0].text + " locale: " + Shown(row[1].text) + "\r\n" + row[0].text +
                                                   " SISS: " + Shown(row[2].text);
}

// What the confirmation will write, beside the box that decides it.
void FormPazienteChanges::Explain()
{
    m_chkRimuoviEsenzioni.enabled = m_chkEsenzioni.checked;
    m_seAnagrafica.text = PersonalDataEffect();
    m_seIndirizzi.text =
        std::string("Sempre come nel SISS: ") + (m_differences.addresses == 0   ? "nessuno dei due cambia."
                                                 : m_differences.addresses == 1 ? "1 cambia."
                                                                                : "cambiano tutti e due.");
    m_seEsenzioni.text = ExemptionsEffect();
    m_seRimuovi.text = RemovalEffect();
}

std::string FormPazienteChanges::PersonalDataEffect() const
{
    if (!m_chkAnagrafica.checked)
    {
        return "I dati anagrafici restano quelli locali.";
    }
    std::string text = m_differences.fields == 0   ? "Nessun dato cambia."
                       : m_differences.fields == 1 ? "1 dato cambia."
                                                   : std::to_string(m_differences.fields) + " dati cambiano.";
    if (m_differences.nowRevoked)
    {
        text += *m_differences.nowRevoked ? " Il paziente diventa revocato." : " Il paziente non è più revocato.";
    }
    return text + (m_differences.otherPerson ? " Prima si chiede se è un paziente NUOVO." : "");
}

std::string FormPazienteChanges::ExemptionsEffect() const
{
    if (!m_chkEsenzioni.checked)
    {
        return "Le esenzioni restano quelle locali.";
    }
    const int sissOnly = m_differences.sissOnly;
    const int both = m_differences.both;
    const int lost = m_differences.lost;
    std::string text = sissOnly == 0   ? "Nessuna nuova"
                       : sissOnly == 1 ? "1 nuova"
                                       : std::to_string(sissOnly) + " nuove";
    text += both == 0 ? "." : "; " + Count(both, "aggiornata", "aggiornate") + " con le date del SISS.";
    return text + (lost == 0   ? ""
                   : lost == 1 ? " 1 da riassegnare non viene salvata."
                               : ' ' + std::to_string(lost) + " da riassegnare non vengono salvate.");
}

std::string FormPazienteChanges::RemovalEffect() const
{
    const int local = m_differences.local;
    if (m_chkEsenzioni.checked && m_chkRimuoviEsenzioni.checked)
    {
        return local == 0   ? "Il paziente non ha esenzioni da eliminare."
               : local == 1 ? "L'esenzione locale viene eliminata, poi si salvano quelle del SISS."
                            : "Le " + std::to_string(local) +
                                  " esenzioni locali vengono eliminate, poi si salvano quelle del SISS.";
    }
    const int kept = m_differences.localOnly;
    return kept == 0   ? "Nessuna esenzione viene eliminata."
           : kept == 1 ? "Senza la spunta l'esenzione \"Da Eliminare\" resta al paziente."
                       : "Senza la spunta le " + std::to_string(kept) + " \"Da Eliminare\" restano al paziente.";
}

void FormPazienteChanges::Clicked(Control& control)
{
    if (&control == &m_conferma)
    {
        Confirm();
    }
    else if (&control == &m_annulla)
    {
        Close();
    }
    else
    {
        Explain();
    }
}

void FormPazienteChanges::Changed(Control& control)
{
    if (const auto* const grid = As<Grid>(control))
    {
        ShowDetails(*grid);
    }
}

void FormPazienteChanges::Confirm()
{
    if (m_chkAnagrafica.checked && m_differences.otherPerson)
    {
        // By default nothing happens: a Yes by mistake doubles the patient, a No may overwrite another person.
        const Answer answer =
            m_desktop.Show({.text = "Sono stati rilevati cambiamenti a dati anagrafici del paziente.\r\n"
                                    "Si vuole acquisire l'elemento come NUOVO paziente?",
                            .title = "Attenzione",
                            .icon = Icon::Exclamation,
                            .buttons = Buttons::YesNoCancel,
                            .defaultButton = 3});
        if (answer == Answer::Cancel)
        {
            return;
        }
        if (answer == Answer::Yes)
        {
            CloseWith(update::byDefault | update::deleteExemptions | update::asNewPatient);
            return;
        }
    }
    CloseWith(update::addresses | Bit(m_chkAnagrafica, update::personalData) | Bit(m_chkEsenzioni, update::exemptions) |
              Bit(m_chkRimuoviEsenzioni, update::deleteExemptions));
}

void FormPazienteChanges::CloseWith(std::int32_t changes)
{
    m_changes = changes;
    m_result = Decision::Confirmed;
    Close();
}

} // namespace vellumo::ui
