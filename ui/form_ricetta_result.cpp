#include "ui/form_ricetta_result.h"

#include <algorithm>

namespace vellumo::ui
{
namespace
{

using Outcome = RicettaResult::Outcome;

std::string Count(std::size_t count, const char* one, const char* many)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

std::size_t CountOf(const std::vector<RicettaResult>& results, Outcome outcome)
{
    return static_cast<std::size_t>(std::ranges::count(results, outcome, &RicettaResult::outcome));
}

std::string Details(const RicettaResult& result)
{
    const std::string text = "Paziente: " + Describe(result.paziente) + "\r\n" + result.ricetta;
    switch (result.outcome)
    {
    case Outcome::Refused:
        return text + ": rifiutata dal SISS.";
    case Outcome::Flagged:
        return text + ": accettata dal SISS con anomalie.";
    case Outcome::WithoutAnswer:
        break;
    }
    return text + ": senza risposta. Il SISS può averla registrata.\r\n"
                  "Prima di prescrivere di nuovo, controllare sul SISS se è tra le ricette del paziente.";
}

// What the second button cancels, and that SISS may know better.
std::string WhatIsCancelled(std::size_t refused, std::size_t withoutAnswer, bool othersAccepted)
{
    std::string text = "Annulla ";
    text += refused == 0 ? "" : Count(refused, "ricetta rifiutata", "ricette rifiutate");
    text += refused == 0 || withoutAnswer == 0 ? "" : " e ";
    text += withoutAnswer == 0 ? ""
            : refused == 0     ? Count(withoutAnswer, "ricetta", "ricette")
                               : std::to_string(withoutAnswer);
    text += withoutAnswer == 0 ? "" : " senza risposta";
    text += othersAccepted ? ", salva i codici delle altre e prosegue." : " e prosegue.";
    if (withoutAnswer > 0)
    {
        text += withoutAnswer == 1 ? "\r\nAttenzione: il SISS può aver registrato quella senza risposta."
                                   : "\r\nAttenzione: il SISS può aver registrato quelle senza risposta.";
    }
    return text;
}

} // namespace

FormRicettaResult::FormRicettaResult(const std::vector<RicettaResult>& results, std::size_t accepted)
    : Form("Esito della registrazione delle ricette")
    , m_anomalie("Il SISS ha riscontrato le seguenti anomalie su alcune ricette.")
    , m_ricette("")
    , m_dettagli("&Dettagli della ricetta selezionata")
    , m_rifiutate("Rappresentano le ricette che sono state rifiutate dal SISS.")
    , m_senzaRisposta("Lo stesso segno hanno le ricette senza risposta, che il SISS può aver registrato.")
    , m_conAnomalie("Rappresentano le ricette per cui sono presenti delle anomalie.")
    , m_stampaErrate("&Stampa ricette errate senza IUP")
    , m_seStampa("")
    , m_annullaErrate("&Annulla ricette errate e prosegui")
    , m_seAnnulla("")
    , m_annullaOperazione("&Annulla operazione")
    , m_seAbbandona("")
{
    LayOut();
    Fill(results);
    Explain({.accepted = accepted,
             .refused = CountOf(results, Outcome::Refused),
             .withoutAnswer = CountOf(results, Outcome::WithoutAnswer),
             .flagged = CountOf(results, Outcome::Flagged)});
}

void FormRicettaResult::LayOut()
{
    m_anomalie.strong = true;
    m_ricette.columns = {{"ICON", "", 500}, {"DESCRIPTION", "Descrizione", 6200}, {"DETTAGLI", "Prescrizioni", 4200}};
    m_ricette.wraps = true;
    m_ricette.visibleRows = 9;
    m_dettagli.readOnly = true;
    m_dettagli.lines = 3;
    m_rifiutate.image = Image::Error;
    m_senzaRisposta.sameLine = true;
    m_conAnomalie.image = Image::Warning;
    m_seAnnulla.strong = true;
    for (Label* const explanation : {&m_seStampa, &m_seAnnulla, &m_seAbbandona})
    {
        explanation->sameLine = true;
        explanation->lines = 2;
    }
    m_stampaErrate.explanation = &m_seStampa;
    m_annullaErrate.explanation = &m_seAnnulla;
    m_annullaOperazione.explanation = &m_seAbbandona;
    // Enter does what closing by the frame does. No button takes Escape: cancelling the operation leaves the codes
    // that SISS gave unstored, and that must not happen by a slip.
    m_annullaErrate.isDefault = true;
    m_controls = {&m_anomalie,     &m_ricette,  &m_dettagli,      &m_rifiutate, &m_senzaRisposta,     &m_conAnomalie,
                  &m_stampaErrate, &m_seStampa, &m_annullaErrate, &m_seAnnulla, &m_annullaOperazione, &m_seAbbandona};
    m_designSize = {11600, 8600};
}

void FormRicettaResult::Fill(const std::vector<RicettaResult>& results)
{
    for (const RicettaResult& result : results)
    {
        m_ricette.rows.push_back({Cell{.image = result.outcome == Outcome::Flagged ? Image::Warning : Image::Error},
                                  Cell{result.descrizione}, Cell{result.prescrizioni}});
        m_details.push_back(Details(result));
    }
    m_dettagli.visible = !results.empty();
    if (results.empty())
    {
        m_initialFocus = &m_annullaErrate;
        return;
    }
    m_initialFocus = &m_ricette;
    m_ricette.selected = 0;
    ShowDetails();
}

void FormRicettaResult::Explain(const Counts& counts)
{
    const auto& [accepted, refused, withoutAnswer, flagged] = counts;
    if (refused + flagged == 0)
    {
        m_anomalie.text = accepted == 0 ? "Il SISS non ha accettato, rifiutato o segnalato nessuna ricetta."
                                        : "Il SISS ha accettato " + Count(accepted, "ricetta", "ricette") +
                                              "; nessuna rifiutata o segnalata.";
    }
    m_ricette.text = "&Ricette rifiutate: " + std::to_string(refused) +
                     ", senza risposta: " + std::to_string(withoutAnswer) +
                     ", accettate con anomalie: " + std::to_string(flagged);
    m_senzaRisposta.visible = withoutAnswer > 0;
    const std::size_t wrong = refused + withoutAnswer;
    m_seStampa.text =
        wrong == 0   ? "Nessuna ricetta errata da stampare: prosegue soltanto."
        : wrong == 1 ? "La ricetta errata resta valida e si stampa senza codice IUP."
                     : "Le " + std::to_string(wrong) + " ricette errate restano valide e si stampano senza codice IUP.";
    m_seAbbandona.text = accepted == 0
                             ? "Non annulla e non salva nulla."
                             : "Non annulla e non salva nulla: i codici già dati dal SISS restano solo nel giornale.";
    m_seAnnulla.text = wrong == 0 ? "Nessuna ricetta da annullare: salva i codici del SISS e prosegue."
                                  : WhatIsCancelled(refused, withoutAnswer, accepted > 0);
}

void FormRicettaResult::ShowDetails()
{
    m_dettagli.value = m_ricette.selected ? m_details.at(*m_ricette.selected) : "";
}

void FormRicettaResult::Changed(Control& control)
{
    if (&control == &m_ricette)
    {
        ShowDetails();
    }
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
