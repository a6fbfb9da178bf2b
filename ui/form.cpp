#include "ui/form.h"

namespace vellumo::ui
{

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
