#include "ui/form.h"

namespace vellumo::ui
{

void Form::Select(const Control& option) const
{
    for (Control* const control : m_controls)
    {
        if (control->kind == ControlKind::OptionButton)
        {
            dynamic_cast<OptionButton&>(*control).selected = control == &option;
        }
    }
}

void Form::RefreshView()
{
    if (m_view != nullptr)
    {
        m_view->Refresh();
    }
}

void Form::Focus(const Control& control)
{
    if (m_view != nullptr)
    {
        m_view->Focus(control);
    }
}

} // namespace vellumo::ui
