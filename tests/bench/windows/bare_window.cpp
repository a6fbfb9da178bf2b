#include "tests/bench/windows/bare_window.h"

#include "platform/windows/forms/window_message.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cwchar>

namespace vellumo::bench
{
namespace
{

using windows::Send;

constexpr UINT shown = WM_APP;
constexpr int firstId = 1000;

struct EmptyDialog
{
    alignas(DWORD) DLGTEMPLATE head;
    WORD menu;
    WORD windowClass;
    WORD title;
};

std::wstring TextOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::wstring ClassOf(HWND window)
{
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

bool IsBold(HWND window)
{
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(Send(window, WM_GETFONT)), sizeof font, &font);
    return font.lfWeight >= FW_BOLD;
}

std::wstring CellText(HWND list, std::size_t row, std::size_t column)
{
    std::array<wchar_t, 2000> text{};
    LVITEMW item{};
    item.iSubItem = static_cast<int>(column);
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    Send(list, LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item));
    return item.pszText;
}

HFONT MakeFont(LONG weight)
{
    return CreateFontW(-11, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, L"Tahoma");
}

} // namespace

BareWindow::BareWindow(HWND model)
    : m_title(TextOf(model))
    , m_style(static_cast<DWORD>(GetWindowLongPtrW(model, GWL_STYLE)) & ~DWORD{WS_VISIBLE})
    , m_extendedStyle(static_cast<DWORD>(GetWindowLongPtrW(model, GWL_EXSTYLE)))
{
    GetWindowRect(model, &m_place);
    for (HWND child = GetWindow(model, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
    {
        m_controls.push_back(Read(child));
    }
}

// A grid of our own becomes the system's list.
BareWindow::Control BareWindow::Read(HWND child)
{
    Control control;
    control.windowClass = ClassOf(child);
    control.text = TextOf(child);
    control.style = static_cast<DWORD>(GetWindowLongPtrW(child, GWL_STYLE));
    control.extendedStyle = static_cast<DWORD>(GetWindowLongPtrW(child, GWL_EXSTYLE)) & ~DWORD{WS_EX_NOPARENTNOTIFY};
    control.bold = IsBold(child);
    GetWindowRect(child, &control.place);
    control.checked = static_cast<WPARAM>(Send(child, BM_GETCHECK)); // 0 of what cannot be checked
    if (control.windowClass == L"ComboBox")
    {
        // It is made as high as it is with its list.
        Send(child, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&control.place));
        control.chosen = static_cast<WPARAM>(Send(child, CB_GETCURSEL));
        for (LRESULT i = 0; i < Send(child, CB_GETCOUNT); ++i)
        {
            std::wstring entry(static_cast<std::size_t>(Send(child, CB_GETLBTEXTLEN, static_cast<WPARAM>(i))), L'\0');
            Send(child, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(entry.data()));
            control.entries.push_back(entry);
        }
    }
    MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT*>(&control.place), 2);
    if (const auto header = reinterpret_cast<HWND>(Send(child, LVM_GETHEADER)); IsWindow(header) != FALSE)
    {
        control.windowClass = WC_LISTVIEWW;
        control.style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL;
        const auto columns = static_cast<std::size_t>(Send(header, HDM_GETITEMCOUNT));
        for (std::size_t column = 0; column < columns; ++column)
        {
            std::array<wchar_t, 200> caption{};
            HDITEMW item{};
            item.mask = HDI_TEXT;
            item.pszText = caption.data();
            item.cchTextMax = static_cast<int>(caption.size());
            Send(header, HDM_GETITEMW, column, reinterpret_cast<LPARAM>(&item));
            control.columns.emplace_back(caption.data(), static_cast<int>(Send(child, LVM_GETCOLUMNWIDTH, column)));
        }
        const auto rows = static_cast<std::size_t>(Send(child, LVM_GETITEMCOUNT));
        for (std::size_t row = 0; row < rows; ++row)
        {
            control.rows.emplace_back();
            for (std::size_t column = 0; column < columns; ++column)
            {
                control.rows.back().push_back(CellText(child, row, column));
            }
        }
    }
    return control;
}

void BareWindow::ShowModal(const Work& work)
{
    m_work = work;
    EmptyDialog dialog{};
    dialog.head.style = m_style;
    dialog.head.dwExtendedStyle = m_extendedStyle;
    DialogBoxIndirectParamW(GetModuleHandleW(nullptr), &dialog.head, nullptr, &BareWindow::Procedure,
                            reinterpret_cast<LPARAM>(this));
    DeleteObject(m_plain);
    DeleteObject(m_bold);
}

INT_PTR CALLBACK BareWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    auto* const self = reinterpret_cast<BareWindow*>(GetWindowLongPtrW(window, DWLP_USER));
    switch (message)
    {
    case WM_INITDIALOG:
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        reinterpret_cast<BareWindow*>(lParam)->Make(window);
        return FALSE;
    case WM_SHOWWINDOW:
        PostMessageW(window, shown, 0, 0);
        return FALSE;
    case shown:
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        if (self->m_work)
        {
            self->m_work(window);
            EndDialog(window, 0);
        }
        return TRUE;
    case WM_NOTIFY:
        return self != nullptr ? self->GiveText(*reinterpret_cast<NMHDR*>(lParam)) : FALSE;
    case WM_CLOSE:
        EndDialog(window, 0);
        return TRUE;
    default:
        static_cast<void>(wParam);
        return FALSE;
    }
}

void BareWindow::Make(HWND window)
{
    m_plain = MakeFont(FW_NORMAL);
    m_bold = MakeFont(FW_BOLD);
    SetWindowTextW(window, m_title.c_str());
    SetWindowPos(window, nullptr, m_place.left, m_place.top, m_place.right - m_place.left, m_place.bottom - m_place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    int id = firstId;
    for (const Control& control : m_controls)
    {
        const RECT& place = control.place;
        const HWND child =
            CreateWindowExW(control.extendedStyle, control.windowClass.c_str(), control.text.c_str(), control.style,
                            place.left, place.top, place.right - place.left, place.bottom - place.top, window,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id++)), GetModuleHandleW(nullptr), nullptr);
        Send(child, WM_SETFONT, reinterpret_cast<WPARAM>(control.bold ? m_bold : m_plain), FALSE);
        Fill(child, control);
    }
}

void BareWindow::Fill(HWND child, const Control& control) const
{
    for (const std::wstring& entry : control.entries)
    {
        Send(child, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.c_str()));
    }
    if (!control.entries.empty())
    {
        Send(child, CB_SETCURSEL, control.chosen);
    }
    if (control.checked != BST_UNCHECKED)
    {
        Send(child, BM_SETCHECK, control.checked);
    }
    for (std::size_t i = 0; i < control.columns.size(); ++i)
    {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = const_cast<wchar_t*>(control.columns[i].first.c_str());
        column.cx = control.columns[i].second;
        Send(child, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    }
    if (!control.columns.empty())
    {
        Send(child, LVM_SETITEMCOUNT, control.rows.size());
    }
}

LRESULT BareWindow::GiveText(NMHDR& notification) const
{
    const auto index = static_cast<std::size_t>(notification.idFrom) - firstId;
    if (notification.code != LVN_GETDISPINFOW || index >= m_controls.size())
    {
        return FALSE;
    }
    auto& item = reinterpret_cast<NMLVDISPINFOW&>(notification).item;
    if ((item.mask & LVIF_TEXT) != 0)
    {
        const std::wstring& text =
            m_controls[index].rows[static_cast<std::size_t>(item.iItem)][static_cast<std::size_t>(item.iSubItem)];
        const auto length = std::min(text.size(), static_cast<std::size_t>(item.cchTextMax) - 1);
        std::wmemcpy(item.pszText, text.c_str(), length);
        item.pszText[length] = L'\0';
    }
    return TRUE;
}

} // namespace vellumo::bench
