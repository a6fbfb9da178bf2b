// What the controls of one window draw with: its fonts, its scale, how large a text comes out. Owned by the window.
#pragma once

#include "platform/windows/forms/dpi.h"
#include "platform/windows/forms/drawing.h"
#include "ui/controls.h"

#include <windows.h>

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace vellumo::windows
{

struct DeleteGdiObject
{
    void operator()(HGDIOBJ object) const noexcept { DeleteObject(object); }
};
using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteGdiObject>;

struct ChildKind
{
    const wchar_t* windowClass = L"STATIC";
    DWORD style = SS_LEFT;
    DWORD extendedStyle = 0;
    int id = -1; // within the window
    bool strong = false;
};

class Surface
{
public:
    explicit Surface(HWND window);

    // The window's density is now that: other fonts, in all controls that have these.
    void ChangeDpi(int dpi);

    [[nodiscard]] HWND Window() const noexcept { return m_window; }
    [[nodiscard]] HFONT Plain() const noexcept { return m_plain.get(); }
    [[nodiscard]] HFONT Bold() const noexcept { return m_bold.get(); }
    [[nodiscard]] HFONT FontFor(bool strong) const noexcept { return strong ? Bold() : Plain(); }
    [[nodiscard]] int LineHeight() const noexcept { return m_lineHeight; }

    // Pixels for a length that is given at 96 dots an inch, or in twips.
    [[nodiscard]] int Pixels(int at96) const noexcept { return MulDiv(at96, m_dpi, 96); }
    [[nodiscard]] int PixelsOfTwips(int twips) const noexcept { return MulDiv(twips, m_dpi, 1440); }
    [[nodiscard]] int Metric(int metric) const noexcept { return MetricFor(metric, m_dpi); }
    // The window's size with that inner one.
    [[nodiscard]] SIZE FrameAround(SIZE inner) const noexcept { return SizeWithFrame(m_window, inner, m_dpi); }
    // Width of one line of text. With an access key the "&" is not counted.
    [[nodiscard]] int TextWidth(std::wstring_view text, bool strong, bool accessKey) const;

    // Height of a text in that width, drawn with these DrawText flags.
    [[nodiscard]] int TextHeight(std::wstring_view text, bool strong, int width, UINT format) const;

    // The system's own icons, as large as its small ones. They belong to the system.
    [[nodiscard]] int ImageSize() const noexcept { return Metric(SM_CXSMICON); }
    [[nodiscard]] HICON IconFor(ui::Image image) const noexcept;
    [[nodiscard]] ui::Image ImageOf(HICON icon) const noexcept;

    // Of the system's headers above lists.
    [[nodiscard]] int HeaderHeight() const;

    // Makes a child control in this window, or in a child of it; that window owns it. Faults when it cannot be made.
    [[nodiscard]] HWND MakeChild(const ChildKind& kind, const RECT& place, const std::wstring& text = {},
                                 HWND parent = nullptr) const;
    // Those made in this window, in the order of making; to ask the system for each takes noticeably longer.
    [[nodiscard]] const std::vector<HWND>& Children() const noexcept { return m_children; }

private:
    HWND m_window;
    MeasuringContext m_measuring;
    int m_dpi;
    Font m_plain;
    Font m_bold;
    int m_lineHeight = 0;
    mutable std::vector<HWND> m_children;
};

} // namespace vellumo::windows
