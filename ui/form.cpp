#include "ui/form.h"

namespace vellumo::ui
{

void Form::Select(const OptionButton& option) const
{
    for (Control* const control : m_controls)
    {
        if (auto* const each = As<OptionButton>(*control))
        {
            each->selected = each == &option;
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
