// The window that shows, when a prescribing session is closed, which prescriptions SISS refused, flagged or left
// without an answer, and asks what to do with those that it did not accept. It is shown also when there is none. The
// details of the selected row say whose prescription it is; beside each button stands what it will do.
#pragma once

#include "ui/form.h"
#include "ui/whom.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vellumo::ui
{

// A prescription that was refused, has no answer, or was accepted with warnings. Texts may have several lines (CR LF).
struct RicettaResult
{
    enum class Outcome
    {
        Refused,
        WithoutAnswer, // the reply was lost or could not be read: SISS may have registered it
        Flagged,
    };

    Outcome outcome = Outcome::Refused;
    std::string descrizione = {};  // what SISS says
    std::string prescrizioni = {}; // what was prescribed
    std::string ricetta = {};      // kind, form and number: "Ricetta farmaci 101, numero 1"
    Whom paziente = {};
};

class FormRicettaResult final : public Form
{
public:
    enum class Decision
    {
        PrintWithoutIup,
        CancelRefused, // also when closed by the frame
        CancelAll,
    };

    // `accepted`: how many SISS accepted, flagged ones included.
    FormRicettaResult(const std::vector<RicettaResult>& results, std::size_t accepted);

    [[nodiscard]] Decision Result() const noexcept { return m_result; }

    void Clicked(Control& control) override;
    void Changed(Control& control) override;

private:
    struct Counts
    {
        std::size_t accepted = 0;
        std::size_t refused = 0;
        std::size_t withoutAnswer = 0;
        std::size_t flagged = 0;
    };

    void LayOut();
    void Fill(const std::vector<RicettaResult>& results);
    void Explain(const Counts& counts);
    void ShowDetails();

    Decision m_result = Decision::CancelRefused;
    std::vector<std::string> m_details; // one a row

    Label m_anomalie;
    Grid m_ricette;
    TextBox m_dettagli;
    Label m_rifiutate;
    Label m_senzaRisposta;
    Label m_conAnomalie;
    Button m_stampaErrate;
    Label m_seStampa;
    Button m_annullaErrate;
    Label m_seAnnulla;
    Button m_annullaOperazione;
    Label m_seAbbandona;
};

} // namespace vellumo::ui
