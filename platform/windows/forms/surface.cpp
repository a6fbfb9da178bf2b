#include "platform/windows/forms/surface.h"

#include "host/fault.h"
#include "platform/windows/forms/window_message.h"
#include "platform/windows/system/this_module.h"

#include <commctrl.h>

#include <array>
#include <atomic>
#include <string>
#include <utility>

namespace vellumo::windows
{
namespace
{

SIZE Measure(HDC context, HFONT font, std::wstring_view text, UINT format, LONG width = 0)
{
    SelectObject(context, font);
    RECT area{0, 0, width, 0};
    DrawTextW(context, text.data(), static_cast<int>(text.size()), &area, format | DT_CALCRECT);
    SelectObject(context, GetStockObject(SYSTEM_FONT)); // a font that is selected cannot go
    return {area.right, area.bottom};
}

Font MakeFont(int dpi, LONG weight)
{
    constexpr int points = 8;
    return Font(CreateFontW(-MulDiv(points, dpi, 72), 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                            OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, L"Tahoma"));
}

int LineHeightOf(HDC context, HFONT font)
{
    return static_cast<int>(Measure(context, font, L"Àg", DT_SINGLELINE).cy);
}

// The height of a header at the density that was last asked for: to make one only to measure it costs as much as any
// other control, with every window anew.
struct HeaderMeasured
{
    int dpi = 0;
    int height = 0;
};
std::atomic<HeaderMeasured> lastHeader;

using FontChanges = std::array<std::pair<HFONT, HFONT>, 2>; // from, to

BOOL CALLBACK ChangeFont(HWND child, LPARAM changes) noexcept
{
    const auto font = reinterpret_cast<HFONT>(Send(child, WM_GETFONT));
    for (const auto& [before, after] : *reinterpret_cast<const FontChanges*>(changes))
    {
        if (font == before)
        {
            Send(child, WM_SETFONT, reinterpret_cast<WPARAM>(after), FALSE);
        }
    }
    return TRUE;
}

} // namespace

Surface::Surface(HWND window)
    : m_window(window)
    , m_dpi(DpiOf(window))
    , m_plain(MakeFont(m_dpi, FW_NORMAL))
    , m_bold(MakeFont(m_dpi, FW_BOLD))
    , m_lineHeight(LineHeightOf(m_measuring.Context(), m_plain.get()))
{
}

void Surface::ChangeDpi(int dpi)
{
    Font plain = MakeFont(dpi, FW_NORMAL);
    Font bold = MakeFont(dpi, FW_BOLD);
    const FontChanges changes{{{Plain(), plain.get()}, {Bold(), bold.get()}}};
    EnumChildWindows(m_window, &ChangeFont, reinterpret_cast<LPARAM>(&changes));
    m_dpi = dpi;
    m_plain = std::move(plain); // the old ones go when nobody draws with them any more
    m_bold = std::move(bold);
    m_lineHeight = LineHeightOf(m_measuring.Context(), Plain());
}

int Surface::TextWidth(std::wstring_view text, bool strong, bool accessKey) const
{
    return Measure(m_measuring.Context(), FontFor(strong), text, DT_SINGLELINE | (accessKey ? 0u : DT_NOPREFIX)).cx;
}

int Surface::TextHeight(std::wstring_view text, bool strong, int width, UINT format) const
{
    return text.empty() ? 0 : static_cast<int>(Measure(m_measuring.Context(), FontFor(strong), text, format, width).cy);
}

HICON Surface::IconFor(ui::Image image) const noexcept
{
    constexpr WORD errorIcon = 32513; // OIC_ERROR and OIC_WARNING, which windows.h hides
    constexpr WORD warningIcon = 32515;
    if (image == ui::Image::None)
    {
        return nullptr;
    }
    const WORD name = image == ui::Image::Error ? errorIcon : warningIcon;
    return static_cast<HICON>(
        LoadImageW(nullptr, MAKEINTRESOURCEW(name), IMAGE_ICON, ImageSize(), ImageSize(), LR_SHARED));
}

ui::Image Surface::ImageOf(HICON icon) const noexcept
{
    return icon == nullptr                       ? ui::Image::None
           : icon == IconFor(ui::Image::Error)   ? ui::Image::Error
           : icon == IconFor(ui::Image::Warning) ? ui::Image::Warning
                                                 : ui::Image::None;
}

// Only a header knows, and it does not have to be seen for it.
int Surface::HeaderHeight() const
{
    const auto known = lastHeader.load();
    if (known.dpi == m_dpi)
    {
        return known.height;
    }
    const HWND header = MakeChild({.windowClass = WC_HEADERW, .style = HDS_HORZ}, {});
    RECT inner{0, 0, 100, 1000};
    WINDOWPOS place{};
    HDLAYOUT layout{&inner, &place};
    Send(header, HDM_LAYOUT, 0, reinterpret_cast<LPARAM>(&layout));
    DestroyWindow(header);
    m_children.pop_back();
    lastHeader = {m_dpi, place.cy};
    return place.cy;
}

HWND Surface::MakeChild(const ChildKind& kind, const RECT& place, const std::wstring& text, HWND parent) const
{
    const HWND child = CreateWindowExW(kind.extendedStyle, kind.windowClass, text.c_str(), kind.style | WS_CHILD,
                                       place.left, place.top, place.right - place.left, place.bottom - place.top,
                                       parent != nullptr ? parent : m_window,
                                       reinterpret_cast<HMENU>(static_cast<INT_PTR>(kind.id)), ThisModule(), nullptr);
    if (child == nullptr)
    {
        throw host::Fault("Non è possibile creare un controllo della finestra.",
                          static_cast<std::int32_t>(HRESULT_FROM_WIN32(GetLastError())));
    }
    Send(child, WM_SETFONT, reinterpret_cast<WPARAM>(FontFor(kind.strong)), FALSE);
    if (parent == nullptr)
    {
        m_children.push_back(child);
    }
    return child;
}

} // namespace vellumo::windows
