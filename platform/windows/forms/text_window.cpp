#include "platform/windows/forms/text_window.h"

#include "platform/windows/forms/abridged.h"

namespace vellumo::windows
{

void TextWindow::Place(int left, int top, int right, int bottom) const noexcept
{
    SetWindowPos(m_window, nullptr, left, top, right - left, bottom - top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void TextWindow::Update(const ui::Control& control)
{
    UpdateText(control.text);
    UpdateState(control);
}

void TextWindow::UpdateText(const std::string& text)
{
    if (text != m_text)
    {
        m_text = text;
        SetWindowTextW(m_window, Abridged(text).c_str());
    }
}

void TextWindow::UpdateState(const ui::Control& control) const noexcept
{
    const bool shown = (GetWindowLongPtrW(m_window, GWL_STYLE) & WS_VISIBLE) != 0;
    if (shown != control.visible)
    {
        ShowWindow(m_window, control.visible ? SW_SHOWNA : SW_HIDE);
    }
    if ((IsWindowEnabled(m_window) != FALSE) != control.enabled)
    {
        EnableWindow(m_window, control.enabled);
    }
}

} // namespace vellumo::windows
