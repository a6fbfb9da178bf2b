// The window that shows, when a prescribing session is closed, which prescriptions SISS refused or flagged, and asks
// what to do with the refused ones. It is shown also when there is none.
#pragma once

#include "ui/form.h"

#include <string>
#include <vector>

namespace vellumo::ui
{

// A prescription that was refused, or accepted with warnings. Texts may have several lines (CR LF).
struct RicettaResult
{
    bool refused = false;
    std::string descrizione;  // what SISS says
    std::string prescrizioni; // what was prescribed
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

    explicit FormRicettaResult(const std::vector<RicettaResult>& results);

    [[nodiscard]] Decision Result() const noexcept { return m_result; }

    void Clicked(Control& control) override;

private:
    void LayOut();
    void Fill(const std::vector<RicettaResult>& results);

    Decision m_result = Decision::CancelRefused;

    Label m_anomalie;
    Grid m_ricette;
    Label m_rifiutate;
    Label m_conAnomalie;
    Button m_stampaErrate;
    Button m_annullaErrate;
    Button m_annullaOperazione;
};

} // namespace vellumo::ui
