#include "ui/form_esenzioni.h"

#include "ui/search_text.h"

#include <algorithm>

namespace vellumo::ui
{
namespace
{

constexpr Colour blue = 0x0000FF;
constexpr Colour palePink = 0xFFEFF6;

constexpr const char* localExemptionsSql =
    "SELECT IDEsenzione, Esenzione, CodiceIdentificativo, IDTipoEsenzione FROM VwPartecipazioneSpesa";

constexpr Colour darkRed = 0xB00000;

} // namespace

FormEsenzioni::FormEsenzioni(const Whom& cittadino, std::vector<SissExemption>& esenzioni, host::Connection& connection,
                             Desktop& desktop)
    : Form("Esenzioni del cittadino")
    , m_esenzioni(esenzioni)
    , m_desktop(desktop)
    , m_cittadino("Cittadino SISS: " + Describe(cittadino))
    , m_stato("")
    , m_esenzioniSiss("&Esenzioni SISS del cittadino")
    , m_dettaglio("&Dettagli dell'esenzione selezionata")
    , m_cerca("Ce&rca esenzione locale:")
    , m_assegna("&Assegna")
    , m_invio("")
    , m_esenzioniLocali("")
    , m_conferma("&Conferma")
    , m_annulla("A&nnulla")
{
    ReadLocalExemptions(connection);
    LayOut();
    for (const SissExemption& esenzione : m_esenzioni)
    {
        m_assigned.push_back(esenzione.IDEsenzione);
        m_esenzioniSiss.rows.push_back({Cell{esenzione.Codice}, Cell{esenzione.Descrizione}, Cell{}});
        ShowAssignment(m_assigned.size() - 1);
    }
    const auto offered = NextOffered(0);
    m_initialFocus = offered ? static_cast<Control*>(&m_cerca) : &m_conferma;
    if (!m_assigned.empty())
    {
        m_esenzioniSiss.selected = offered.value_or(0);
    }
    Search();
    UpdateState();
}

void FormEsenzioni::ReadLocalExemptions(host::Connection& connection)
{
    for (const auto rows = connection.Open(localExemptionsSql); !rows->IsAtEnd(); rows->MoveNext())
    {
        LocalExemption local;
        local.id = rows->Field(std::size_t{0}).ToInteger();
        local.descrizione = rows->Field(std::size_t{1}).ToText();
        local.codice = rows->Field(std::size_t{2}).ToText();
        // The line end keeps a word from being found across the two.
        local.searchText = SearchText(local.codice) + '\n' + SearchText(local.descrizione);
        m_locali.push_back(std::move(local));
    }
    std::stable_sort(m_locali.begin(), m_locali.end(),
                     [](const LocalExemption& a, const LocalExemption& b) { return a.codice < b.codice; });
}

void FormEsenzioni::LayOut()
{
    m_esenzioniSiss.columns = {
        {"CODICE", "Codice", 1200}, {"DESCRIPTION", "Descrizione", 6000}, {"ASSEGNATO", "Esenzione Assegnata", 6400}};
    m_esenzioniSiss.visibleRows = 6;
    m_esenzioniLocali.columns = {{"CODICE", "Codice", 1700}, {"DESCRIPTION", "Descrizione", 9000}};
    m_esenzioniLocali.visibleRows = 12;
    m_cittadino.strong = true;
    m_dettaglio.readOnly = true;
    m_dettaglio.lines = 2;
    m_cerca.list = &m_esenzioniLocali;
    m_assegna.sameLine = true;
    m_annulla.sameLine = true;
    m_annulla.isCancel = true;
    m_controls = {&m_cittadino, &m_stato, &m_esenzioniSiss,   &m_dettaglio, &m_cerca,
                  &m_assegna,   &m_invio, &m_esenzioniLocali, &m_conferma,  &m_annulla};
    m_designSize = {14000, 9200};
}

void FormEsenzioni::Clicked(Control& control)
{
    if (&control == &m_assegna || &control == &m_esenzioniLocali)
    {
        Assign();
    }
    else if (&control == &m_esenzioniSiss)
    {
        Focus(m_cerca);
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

void FormEsenzioni::Changed(Control& control)
{
    if (&control == &m_cerca || (&control == &m_esenzioniSiss && m_cerca.value.empty()))
    {
        Search();
    }
    UpdateState();
}

// Fills the local list with what matches. The likeliest match is selected, so that Enter takes it: the code as typed,
// else one that begins so, else the first. Without a search only what is proposed is selected, so that a second Enter
// by mistake does not assign anything else.
void FormEsenzioni::Search()
{
    const SearchWords words(m_cerca.value);
    const std::string typed = SearchText(m_cerca.value);
    m_found.clear();
    m_esenzioniLocali.rows.clear();
    m_esenzioniLocali.selected.reset();
    std::string_view best;
    for (std::size_t i = 0; i < m_locali.size(); ++i)
    {
        const LocalExemption& local = m_locali[i];
        if (!words.OccurIn(local.searchText))
        {
            continue;
        }
        const std::size_t row = m_found.size();
        m_found.push_back(i);
        m_esenzioniLocali.rows.push_back({Cell{local.codice}, Cell{local.descrizione}});
        const std::string_view code = std::string_view(local.searchText).substr(0, local.searchText.find('\n'));
        const bool better = code == typed ? best != typed : code.starts_with(typed) && !best.starts_with(typed);
        if (!words.Empty() && (row == 0 || better))
        {
            m_esenzioniLocali.selected = row;
            best = code;
        }
    }
    if (words.Empty())
    {
        Propose();
    }
}

// For a row that still needs one, the local exemption with the same code.
void FormEsenzioni::Propose()
{
    if (!m_esenzioniSiss.selected || StateOf(*m_esenzioniSiss.selected) == Assignment::Good)
    {
        return;
    }
    const std::string code = SearchText(m_esenzioni[*m_esenzioniSiss.selected].Codice) + '\n';
    const auto same =
        std::ranges::find_if(m_found, [&](std::size_t local) { return m_locali[local].searchText.starts_with(code); });
    if (same != m_found.end())
    {
        m_esenzioniLocali.selected = static_cast<std::size_t>(same - m_found.begin());
    }
}

void FormEsenzioni::Assign()
{
    if (!m_esenzioniSiss.selected || !m_esenzioniLocali.selected)
    {
        Focus(m_cerca); // what was searched is not there
        return;
    }
    const std::size_t row = *m_esenzioniSiss.selected;
    m_assigned[row] = m_locali[m_found[*m_esenzioniLocali.selected]].id;
    ShowAssignment(row);
    GoToRow(NextOffered(row).value_or(row));
}

void FormEsenzioni::GoToRow(std::size_t row)
{
    m_esenzioniSiss.selected = row;
    m_cerca.value.clear();
    Search();
    UpdateState();
    Focus(NextOffered(0) ? static_cast<Control&>(m_cerca) : m_conferma);
}

void FormEsenzioni::Confirm()
{
    if (const auto missing = Next(0, Assignment::Missing))
    {
        m_desktop.Show({.text = "Prima di proseguire è necessario assegnare le esenzioni mancanti.",
                        .title = "Attenzione!!",
                        .icon = Icon::Exclamation});
        GoToRow(*missing);
        return;
    }
    for (std::size_t row = 0; row < m_assigned.size(); ++row)
    {
        m_esenzioni[row].IDEsenzione = m_assigned[row];
        m_esenzioni[row].LocaleMancante = StateOf(row) == Assignment::Lost;
    }
    m_result = Decision::Confirmed;
    Close();
}

void FormEsenzioni::ShowAssignment(std::size_t row)
{
    Cell& cell = m_esenzioniSiss.rows[row].back();
    switch (StateOf(row))
    {
    case Assignment::Missing:
        cell = {.text = "Assegna esenzione", .foreground = blue, .background = palePink};
        break;
    case Assignment::Lost:
        cell = {.text = "Non esiste più (esenzione locale " + std::to_string(m_assigned[row]) + "): riassegnare",
                .foreground = darkRed,
                .background = palePink};
        break;
    case Assignment::Good:
        const LocalExemption& local = *FindLocal(m_assigned[row]);
        cell = {.text = local.codice + " - " + local.descrizione};
        break;
    }
}

const FormEsenzioni::LocalExemption* FormEsenzioni::FindLocal(std::int32_t id) const
{
    const auto local = std::ranges::find(m_locali, id, &LocalExemption::id);
    return local == m_locali.end() ? nullptr : &*local;
}

// A pairing made earlier may point to an exemption that the list no longer has.
FormEsenzioni::Assignment FormEsenzioni::StateOf(std::size_t row) const
{
    const std::int32_t id = m_assigned[row];
    return id < 1 ? Assignment::Missing : FindLocal(id) == nullptr ? Assignment::Lost : Assignment::Good;
}

// The first row in that state, looking from `from` to the end and then from the start.
std::optional<std::size_t> FormEsenzioni::Next(std::size_t from, Assignment state) const
{
    for (std::size_t i = 0; i < m_assigned.size(); ++i)
    {
        if (const std::size_t row = (from + i) % m_assigned.size(); StateOf(row) == state)
        {
            return row;
        }
    }
    return std::nullopt;
}

// What must be assigned comes before what may be.
std::optional<std::size_t> FormEsenzioni::NextOffered(std::size_t from) const
{
    const auto missing = Next(from, Assignment::Missing);
    return missing ? missing : Next(from, Assignment::Lost);
}

// Descriptions are long and often differ only at their end, where a column cuts them.
std::string FormEsenzioni::Detail() const
{
    if (!m_esenzioniSiss.selected)
    {
        return "";
    }
    const std::size_t row = *m_esenzioniSiss.selected;
    const SissExemption& siss = m_esenzioni[row];
    return "SISS: " + siss.Codice + (siss.Descrizione.empty() ? "" : " - " + siss.Descrizione) + "\r\nLocale: " +
           (StateOf(row) == Assignment::Missing ? "da assegnare" : m_esenzioniSiss.rows[row].back().text);
}

std::string FormEsenzioni::State() const
{
    std::size_t missing = 0;
    std::size_t lost = 0;
    for (std::size_t row = 0; row < m_assigned.size(); ++row)
    {
        missing += StateOf(row) == Assignment::Missing ? 1U : 0U;
        lost += StateOf(row) == Assignment::Lost ? 1U : 0U;
    }
    std::string text = m_assigned.empty() ? "Il SISS non riporta esenzioni per questo cittadino."
                       : missing == 1     ? "Resta 1 esenzione da assegnare."
                       : missing > 1      ? "Restano " + std::to_string(missing) + " esenzioni da assegnare."
                       : lost == 0        ? "Tutte le esenzioni sono assegnate."
                                          : "";
    if (lost > 0)
    {
        text += text.empty() ? "" : " ";
        text += lost == 1 ? "1 è assegnata a un'esenzione locale che non esiste più: non verrà salvata."
                          : std::to_string(lost) +
                                " sono assegnate a esenzioni locali che non esistono più: non verranno salvate.";
    }
    return text;
}

std::string FormEsenzioni::OnEnter() const
{
    if (!m_assegna.enabled)
    {
        return Next(0, Assignment::Missing) ? "Cercare un'esenzione locale, oppure sceglierla nell'elenco."
                                            : "Invio conferma le esenzioni assegnate.";
    }
    if (!m_esenzioniLocali.selected)
    {
        return "Nessuna esenzione locale corrisponde alla ricerca.";
    }
    return "Invio assegna all'esenzione SISS " + m_esenzioni[*m_esenzioniSiss.selected].Codice +
           " l'esenzione locale " + m_locali[m_found[*m_esenzioniLocali.selected]].codice +
           ", selezionata nell'elenco.";
}

void FormEsenzioni::UpdateState()
{
    m_stato.text = State();
    m_esenzioniLocali.text =
        "Esenzioni &locali (" + std::to_string(m_found.size()) + " di " + std::to_string(m_locali.size()) + ")";
    m_dettaglio.value = Detail();
    // While a search finds nothing, Enter must not confirm.
    m_assegna.enabled = m_esenzioniSiss.selected && (m_esenzioniLocali.selected || !m_cerca.value.empty());
    m_assegna.isDefault = m_assegna.enabled;
    m_conferma.isDefault = !m_assegna.enabled;
    m_invio.text = OnEnter();
}

} // namespace vellumo::ui
