// A Windows control whose text follows a text of the form, and which is shown and enabled as the form's control says.
// It is described first and made when it is placed for the first time, at its place and with its text: made small and
// empty, then named, then moved, windows open noticeably later. The window that it stands in owns it.
#pragma once

#include "platform/windows/forms/surface.h"
#include "ui/controls.h"

#include <windows.h>

#include <string>

namespace vellumo::windows
{

class TextWindow
{
public:
    TextWindow(const Surface& surface, const ChildKind& kind)
        : m_surface(surface)
        , m_kind(kind)
    {
        m_kind.style |= WS_VISIBLE;
    }

    // Null before it is made.
    [[nodiscard]] HWND Get() const noexcept { return m_window; }
    // True when this has made it. Faults when it cannot be made.
    bool Place(int left, int top, int right, int bottom);
    bool Place(const RECT& place) { return Place(place.left, place.top, place.right, place.bottom); }
    void Update(const ui::Control& control);
    void UpdateText(const std::string& text);
    // The operator has changed the text to this.
    void Note(const std::string& text) { m_text = text; }
    void UpdateState(const ui::Control& control) noexcept;

private:
    const Surface& m_surface;
    ChildKind m_kind;
    HWND m_window = nullptr;
    std::string m_text;
};

} // namespace vellumo::windows
