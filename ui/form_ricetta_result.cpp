#include "ui/form_ricetta_result.h"

#include <algorithm>

namespace vellumo::ui
{

FormRicettaResult::FormRicettaResult(const std::vector<RicettaResult>& results)
    : Form("Esito della registrazione delle ricette")
    , m_anomalie("Il SISS ha riscontrato le seguenti anomalie su alcune ricette.")
    , m_ricette("")
    , m_rifiutate("Rappresentano le ricette che sono state rifiutate dal SISS.")
    , m_conAnomalie("Rappresentano le ricette per cui sono presenti delle anomalie.")
    , m_stampaErrate("&Stampa ricette errate senza IUP")
    , m_annullaErrate("&Annulla ricette errate e prosegui")
    , m_annullaOperazione("&Annulla operazione")
{
    LayOut();
    Fill(results);
}

void FormRicettaResult::LayOut()
{
    m_ricette.columns = {{"ICON", "", 500}, {"DESCRIPTION", "Descrizione", 6200}, {"DETTAGLI", "Prescrizioni", 4200}};
    m_ricette.wraps = true;
    m_ricette.visibleRows = 12;
    m_rifiutate.image = Image::Error;
    m_conAnomalie.image = Image::Warning;
    m_annullaErrate.sameLine = true;
    // Enter does what closing by the frame does. No button takes Escape: cancelling the operation leaves the codes
    // that SISS gave unstored, and that must not happen by a slip.
    m_annullaErrate.isDefault = true;
    m_annullaOperazione.sameLine = true;
    m_controls = {&m_anomalie,     &m_ricette,       &m_rifiutate,        &m_conAnomalie,
                  &m_stampaErrate, &m_annullaErrate, &m_annullaOperazione};
    m_designSize = {11600, 7400};
}

void FormRicettaResult::Fill(const std::vector<RicettaResult>& results)
{
    for (const RicettaResult& result : results)
    {
        m_ricette.rows.push_back({Cell{.image = result.refused ? Image::Error : Image::Warning},
                                  Cell{result.descrizione}, Cell{result.prescrizioni}});
    }
    const auto refused = std::ranges::count_if(results, &RicettaResult::refused);
    const auto flagged = static_cast<std::ptrdiff_t>(results.size()) - refused;
    // An empty list says on its own that all is well.
    m_ricette.text = results.empty() ? "&Ricette: nessuna rifiutata, nessuna con anomalie"
                                     : "&Ricette rifiutate: " + std::to_string(refused) +
                                           ", accettate con anomalie: " + std::to_string(flagged);
    m_initialFocus = results.empty() ? static_cast<Control*>(&m_annullaErrate) : &m_ricette;
}

void FormRicettaResult::Clicked(Control& control)
{
    if (&control == &m_stampaErrate)
    {
        m_result = Decision::PrintWithoutIup;
    }
    else if (&control == &m_annullaErrate)
    {
        m_result = Decision::CancelRefused;
    }
    else if (&control == &m_annullaOperazione)
    {
        m_result = Decision::CancelAll;
    }
    else
    {
        return;
    }
    Close();
}

} // namespace vellumo::ui
