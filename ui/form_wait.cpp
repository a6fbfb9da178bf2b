#include "ui/form_wait.h"

namespace vellumo::ui
{

FormWait::FormWait()
    : WorkingForm("SISS Lombardia")
    , m_operazione("")
    , m_attendere("Attendere...")
    , m_trasmissione("Trasmissione/Ricezione dati in corso...")
{
    m_operazione.strong = true;
    m_controls = {&m_operazione, &m_attendere, &m_trasmissione};
    m_designSize = {5400, 1300};
}

void FormWait::SetOperazione(const std::string& operazione)
{
    m_operazione.text = operazione;
    RefreshView();
}

void FormWait::RaiseOnActivate(const std::any& parameters, std::any& result)
{
    if (OnActivate)
    {
        OnActivate(*this, parameters, result);
    }
}

} // namespace vellumo::ui
