#include "ui/form_paziente_changes.h"

#include <algorithm>
#include <array>
#include <cstdio>
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
    if (date == nullptr || date->IsZero())
    {
        return value.ToText();
    }
    const host::Date::Calendar calendar = date->ToCalendar();
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%02d/%02d/%04d", calendar.day, calendar.month, calendar.year);
    return text.data();
}

std::int32_t Bit(const CheckBox& box, std::int32_t bit)
{
    return box.checked ? bit : 0;
}

} // namespace

FormPazienteChanges::FormPazienteChanges(const ComparedPatient& paziente, const ComparedPatient& cittadino,
                                         std::int32_t changes, Desktop& desktop)
    : Form("Confronto con l'anagrafica SISS")
    , m_changes(changes)
    , m_desktop(desktop)
    , m_riepilogo("")
    , m_campi("&Dati anagrafici")
    , m_esenzioni("")
    , m_chkAnagrafica("Aggiorna i dati &anagrafici")
    , m_chkEsenzioni("Aggiorna le &esenzioni")
    , m_chkRimuoviEsenzioni("&Rimuovi prima tutte le esenzioni locali")
    , m_avvertenza("Residenza e domicilio vengono sempre aggiornati.\r\n"
                   "Le esenzioni \"Da Eliminare\" restano al paziente, se non si rimuovono quelle locali.")
    , m_conferma("&Conferma")
    , m_annulla("A&nnulla")
{
    m_chkAnagrafica.checked = (changes & update::personalData) != 0;
    m_chkEsenzioni.checked = (changes & update::exemptions) != 0;
    m_chkRimuoviEsenzioni.checked = (changes & update::deleteExemptions) != 0;
    m_chkRimuoviEsenzioni.enabled = m_chkEsenzioni.checked;
    FillFields(paziente.values, cittadino.values);
    AddMissing(paziente, cittadino, {.text = "Da Eliminare", .background = removedBackground});
    AddMissing(cittadino, paziente, {.text = "Da Inserire", .background = addedBackground});
    LayOut();
}

void FormPazienteChanges::LayOut()
{
    m_campi.columns = {
        {"CAMPO", "Nome Campo", 2400}, {"VALORE_1", "Anagrafica Locale", 3300}, {"VALORE_2", "Anagrafica SISS", 3300}};
    m_campi.visibleRows = static_cast<int>(fields.size());
    m_esenzioni.columns = {
        {"ESENZIONE", "Esenzione", 1400}, {"DESCRIZIONE", "Descrizione", 6000}, {"STATO", "Stato", 1400}};
    m_esenzioni.visibleRows = 4;
    m_chkRimuoviEsenzioni.sameLine = true;
    m_avvertenza.lines = 2;
    m_conferma.isDefault = true;
    m_annulla.sameLine = true;
    m_annulla.isCancel = true;
    m_controls = {&m_riepilogo,           &m_campi,      &m_esenzioni, &m_chkAnagrafica, &m_chkEsenzioni,
                  &m_chkRimuoviEsenzioni, &m_avvertenza, &m_conferma,  &m_annulla};
    m_initialFocus = &m_conferma;
    m_designSize = {9600, 7600};
}

void FormPazienteChanges::FillFields(const NamedValues& paziente, const NamedValues& cittadino)
{
    int changed = 0;
    for (const Field& field : fields)
    {
        const std::string local = DisplayText(Get(paziente, field.name));
        const std::string siss = DisplayText(Get(cittadino, field.name));
        Row row = {Cell{field.caption}, Cell{local}, Cell{siss}};
        if (local != siss)
        {
            ++changed;
            m_otherPerson = m_otherPerson || field.identifies;
            for (Cell& cell : row)
            {
                cell.background = changedBackground;
                cell.strong = true;
            }
        }
        m_campi.rows.push_back(std::move(row));
    }
    m_riepilogo.text = changed == 0   ? "I dati anagrafici locali corrispondono a quelli del SISS."
                       : changed == 1 ? "1 dato anagrafico è diverso nel SISS: è in grassetto su fondo giallo."
                                      : std::to_string(changed) + " dati anagrafici sono diversi nel SISS: sono in "
                                                                  "grassetto su fondo giallo.";
}

void FormPazienteChanges::AddMissing(const ComparedPatient& from, const ComparedPatient& in, const Cell& state)
{
    for (const ComparedExemption& exemption : from.exemptions)
    {
        const auto found = std::ranges::find(in.exemptions, exemption.IDEsenzione, &ComparedExemption::IDEsenzione);
        if (found == in.exemptions.end())
        {
            m_esenzioni.rows.push_back({Cell{exemption.Codice}, Cell{exemption.Descrizione}, state});
        }
    }
    m_esenzioni.text = "E&senzioni diverse (" + std::to_string(m_esenzioni.rows.size()) + ")";
}

void FormPazienteChanges::Clicked(Control& control)
{
    if (&control == &m_chkEsenzioni)
    {
        m_chkRimuoviEsenzioni.enabled = m_chkEsenzioni.checked;
    }
    else if (&control == &m_conferma)
    {
        Confirm();
    }
    else if (&control == &m_annulla)
    {
        Close();
    }
}

void FormPazienteChanges::Confirm()
{
    if (m_chkAnagrafica.checked && m_otherPerson)
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
