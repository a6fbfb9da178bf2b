// A Windows control whose text follows a text of the form, and which is shown and enabled as the form's control says.
// The window that it stands in owns it.
#pragma once

#include "ui/controls.h"

#include <windows.h>

#include <string>

namespace vellumo::windows
{

class TextWindow
{
public:
    TextWindow() = default;
    explicit TextWindow(HWND window)
        : m_window(window)
    {
    }

    [[nodiscard]] HWND Get() const noexcept { return m_window; }
    void Place(int left, int top, int right, int bottom) const noexcept;
    void Update(const ui::Control& control);
    void UpdateText(const std::string& text);
    // The operator has changed the text to this.
    void Note(const std::string& text) { m_text = text; }
    void UpdateState(const ui::Control& control) const noexcept;

private:
    HWND m_window = nullptr;
    std::string m_text;
};

} // namespace vellumo::windows
