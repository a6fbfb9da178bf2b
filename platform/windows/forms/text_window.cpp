#include "platform/windows/forms/text_window.h"

#include "platform/windows/forms/abridged.h"

namespace vellumo::windows
{

bool TextWindow::Place(int left, int top, int right, int bottom)
{
    if (m_window != nullptr)
    {
        SetWindowPos(m_window, nullptr, left, top, right - left, bottom - top, SWP_NOZORDER | SWP_NOACTIVATE);
        return false;
    }
    m_window = m_surface.MakeChild(m_kind, {left, top, right, bottom}, Abridged(m_text));
    return true;
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
        if (m_window != nullptr)
        {
            SetWindowTextW(m_window, Abridged(text).c_str());
        }
    }
}

void TextWindow::UpdateState(const ui::Control& control) noexcept
{
    if (m_window == nullptr)
    {
        m_kind.style &= ~DWORD{WS_VISIBLE | WS_DISABLED};
        m_kind.style |= (control.visible ? WS_VISIBLE : 0u) | (control.enabled ? 0u : WS_DISABLED);
        return;
    }
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
