// The window in which the doctor chooses, when a prescribing session opens, the kind of form and what is printed.
#pragma once

#include "host/opzioni_ricetta.h"
#include "ui/form.h"

namespace vellumo::ui
{

class FormStampa final : public Form
{
public:
    enum class Decision
    {
        Confirmed,
        Cancelled, // also when closed by the frame
    };

    // Starts on the option of `opzioni.TipoRicetta`; the lists always start on their usual entry. `opzioni` changes
    // only when the choice is confirmed.
    explicit FormStampa(host::OpzioniRicetta& opzioni);

    [[nodiscard]] Decision Result() const noexcept { return m_result; }

    void Clicked(Control& control) override;

private:
    void EnableLists();
    void Confirm();

    host::OpzioniRicetta& m_opzioni;
    Decision m_result = Decision::Cancelled;

    OptionButton m_rur;
    ComboBox m_comboStampaRUR;
    OptionButton m_elettronica;
    ComboBox m_comboStampaRE;
    Button m_ok;
    Button m_annulla;
};

} // namespace vellumo::ui
