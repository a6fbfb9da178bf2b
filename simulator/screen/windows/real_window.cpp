#include "simulator/screen/windows/real_window.h"

#include "platform/windows/forms/window_message.h"
#include "platform/windows/system/text.h"
#include "simulator/screen/windows/cell_looks.h"
#include "simulator/screen/windows/keyboard.h"
#include "simulator/screen/windows/real_control.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <algorithm>
#include <stdexcept>

namespace vellumo::screen
{
namespace
{

using windows::Send;
using windows::ToWide;

// The first inside the window, however deep, that a visible control of this class is; null when there is none.
HWND FindInside(HWND window, const wchar_t* name)
{
    HWND found = nullptr;
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr && found == nullptr;
         child = GetWindow(child, GW_HWNDNEXT))
    {
        found = HasClass(child, name) && IsWindowVisible(child) != FALSE ? child : FindInside(child, name);
    }
    return found;
}

// Window handles are used again, so each window gets a number when it is first asked.
std::uint64_t NumberOf(HWND window)
{
    static INT_PTR last = 0;
    constexpr const wchar_t* property = L"ScenarioWindow";
    if (GetPropW(window, property) == nullptr)
    {
        SetPropW(window, property, reinterpret_cast<HANDLE>(++last));
    }
    return static_cast<std::uint64_t>(reinterpret_cast<INT_PTR>(GetPropW(window, property)));
}

ui::Icon Named(HICON icon)
{
    return icon == LoadIconW(nullptr, IDI_ERROR)         ? ui::Icon::Critical
           : icon == LoadIconW(nullptr, IDI_EXCLAMATION) ? ui::Icon::Exclamation
           : icon == LoadIconW(nullptr, IDI_ASTERISK)    ? ui::Icon::Information
                                                         : ui::Icon::None;
}

} // namespace

RealWindow::RealWindow(HWND window)
    : m_window(window)
{
    m_id = NumberOf(window);
    HICON icon = nullptr;
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
    {
        m_waits = m_waits || TakesInput(child);
        if (icon == nullptr)
        {
            icon = IconOf(child);
        }
        if (AnswerOf(child) != nullptr)
        {
            m_kind = WindowKind::Box;
        }
        if (auto control = ReadControl(child))
        {
            m_handles[control.get()] = child;
            m_controls.push_back(control.get());
            m_read.push_back(std::move(control));
        }
    }
    // A file dialog shows its files in a view that no other dialog has.
    if (FindInside(window, L"SHELLDLL_DefView") != nullptr)
    {
        m_kind = WindowKind::FileDialog;
    }
    if (m_kind == WindowKind::Box)
    {
        const auto labels = All<ui::Label>();
        m_text = labels.empty() ? "" : labels.front()->text;
        m_icon = Named(icon);
        std::erase_if(m_controls, [](ui::Control* each) { return ui::As<ui::Label>(*each) != nullptr; });
    }
}

bool RealWindow::IsLibraryWindow(HWND window)
{
    return HasClass(window, L"#32770") && IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE;
}

std::string RealWindow::Title() const
{
    return TextOf(m_window);
}

ui::Control* RealWindow::Keyboard() const
{
    const HWND focus = GetFocus();
    const auto at = std::find_if(m_controls.begin(), m_controls.end(),
                                 [&](const ui::Control* each) { return m_handles.at(each) == focus; });
    return at == m_controls.end() ? nullptr : *at;
}

ui::Cell RealWindow::Cell(const ui::Grid& grid, std::size_t row, std::size_t column) const
{
    return ReadCell(m_handles.at(&grid), static_cast<int>(row), static_cast<int>(column));
}

void RealWindow::Press(ui::Control& control)
{
    PostMessageW(m_handles.at(&control), BM_CLICK, 0, 0);
}

void RealWindow::Select(ui::Control& control, std::size_t place)
{
    const HWND handle = m_handles.at(&control);
    if (ui::As<ui::ComboBox>(control) != nullptr)
    {
        Send(handle, CB_SETCURSEL, place);
        PostMessageW(m_window, WM_COMMAND, static_cast<WPARAM>(MAKELONG(GetDlgCtrlID(handle), CBN_SELCHANGE)),
                     reinterpret_cast<LPARAM>(handle));
        return;
    }
    LVITEMW item{};
    item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    Send(handle, LVM_SETITEMSTATE, place, reinterpret_cast<LPARAM>(&item));
    Send(handle, LVM_ENSUREVISIBLE, place, FALSE);
}

void RealWindow::DoubleClick(ui::Grid& grid, std::size_t row)
{
    Select(grid, row);
    const HWND list = m_handles.at(&grid);
    const RECT cell = CellArea(list, static_cast<int>(row), 0);
    const LPARAM point = MAKELPARAM(cell.left + 8, (cell.top + cell.bottom) / 2);
    PostMessageW(list, WM_LBUTTONDBLCLK, MK_LBUTTON, point);
    PostMessageW(list, WM_LBUTTONUP, 0, point);
}

void RealWindow::Type(ui::TextBox& box, const std::string& text)
{
    const HWND handle = m_handles.at(&box);
    SetFocus(handle);
    Send(handle, EM_SETSEL, 0, -1);
    Send(handle, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(ToWide(text).c_str()));
}

bool RealWindow::Key(const std::string& key)
{
    SetForegroundWindow(m_window);
    return PressKey(key);
}

// As a hand does: the name goes into the one text box, wherever the system has put it, then the dialog's own button.
void RealWindow::ChooseFile(const std::filesystem::path& file)
{
    if (file.empty())
    {
        PostMessageW(m_window, WM_COMMAND, IDCANCEL, 0);
        return;
    }
    const HWND name = FindInside(m_window, L"Edit");
    if (name == nullptr)
    {
        throw std::out_of_range("the file dialog has no text box");
    }
    std::wstring text = file.wstring();
    std::replace(text.begin(), text.end(), L'/', L'\\');
    Send(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    PostMessageW(m_window, WM_COMMAND, IDOK, 0);
}

void RealWindow::CloseByFrame()
{
    PostMessageW(m_window, WM_SYSCOMMAND, SC_CLOSE, 0);
}

} // namespace vellumo::screen
