#include "ui/working_form.h"

#include "host/fault.h"

namespace vellumo::ui
{

void WorkingForm::Activated()
{
    if (!m_activationPending)
    {
        return;
    }
    m_activationPending = false;
    host::PassOver([&] { RefreshView(); });
    host::PassOver([&] { RaiseOnActivate(std::any(m_parameters), m_result); });
    host::PassOver([&] { RefreshView(); });
    Close();
}

} // namespace vellumo::ui
