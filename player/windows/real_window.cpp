#include "player/windows/real_window.h"

#include "platform/windows/forms/window_message.h"
#include "platform/windows/system/text.h"
#include "player/windows/cell_looks.h"
#include "player/windows/keyboard.h"
#include "player/windows/real_control.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <algorithm>
#include <stdexcept>

namespace vellumo::player
{
namespace
{

using windows::FromWide;
using windows::Send;
using windows::ToWide;

// The controls of a window, in its order.
std::vector<HWND> ChildrenOf(HWND window)
{
    std::vector<HWND> children;
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
    {
        children.push_back(child);
    }
    return children;
}

// The first inside the window, however deep, that a visible control of this class is; null when there is none.
struct Search
{
    const wchar_t* name;
    HWND found = nullptr;
};

BOOL CALLBACK TakeFound(HWND window, LPARAM search) noexcept
{
    auto& wanted = *reinterpret_cast<Search*>(search);
    if (!HasClass(window, wanted.name) || IsWindowVisible(window) == FALSE)
    {
        return TRUE;
    }
    wanted.found = window;
    return FALSE;
}

HWND FindInside(HWND window, const wchar_t* name)
{
    Search search{name};
    EnumChildWindows(window, &TakeFound, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// A text or the icon of a box; null when there is none.
HWND FindStatic(HWND window, bool isIcon)
{
    for (const HWND child : ChildrenOf(window))
    {
        if (IsShown(child) && HasClass(child, L"Static") && IsIcon(child) == isIcon)
        {
            return child;
        }
    }
    return nullptr;
}

// That of the kind at this place, wherever the operator may use it; null when it is disabled.
HWND Usable(HWND window, ControlKind kind, std::size_t place, bool evenDisabled = false)
{
    for (const HWND child : ChildrenOf(window))
    {
        const auto control = ReadControl(child);
        if (control && control->kind == kind && place-- == 0)
        {
            return control->enabled || evenDisabled ? child : nullptr;
        }
    }
    throw std::out_of_range("the window has no such control");
}

} // namespace

bool RealWindow::IsLibraryWindow(HWND window)
{
    return HasClass(window, L"#32770") && IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE;
}

bool RealWindow::IsWaiting() const
{
    const auto children = ChildrenOf(m_window);
    return std::any_of(children.begin(), children.end(), TakesInput);
}

// Window handles are used again, so each window gets a number when it is first asked.
std::uint64_t RealWindow::Id() const
{
    static INT_PTR last = 0;
    constexpr const wchar_t* property = L"ScenarioWindow";
    const HANDLE known = GetPropW(m_window, property);
    if (known != nullptr)
    {
        return static_cast<std::uint64_t>(reinterpret_cast<INT_PTR>(known));
    }
    SetPropW(m_window, property, reinterpret_cast<HANDLE>(++last));
    return static_cast<std::uint64_t>(last);
}

// A file dialog shows its files in a view that no other dialog has. A box is told by its buttons, which have the
// system's own identifiers, whatever they read.
WindowKind RealWindow::Kind() const
{
    if (FindInside(m_window, L"SHELLDLL_DefView") != nullptr)
    {
        return WindowKind::FileDialog;
    }
    const auto children = ChildrenOf(m_window);
    const bool isBox = std::any_of(children.begin(), children.end(),
                                   [](HWND child)
                                   {
                                       const auto control = ReadControl(child);
                                       return control && control->answer;
                                   });
    return isBox ? WindowKind::Box : WindowKind::Form;
}

std::string RealWindow::Title() const
{
    return TextOf(m_window);
}

ui::Icon RealWindow::Icon() const
{
    const HWND icon = FindStatic(m_window, true);
    if (Kind() != WindowKind::Box || icon == nullptr)
    {
        return ui::Icon::None;
    }
    const auto shown = reinterpret_cast<HICON>(Send(icon, STM_GETICON));
    if (shown == LoadIconW(nullptr, IDI_ERROR))
    {
        return ui::Icon::Critical;
    }
    if (shown == LoadIconW(nullptr, IDI_EXCLAMATION))
    {
        return ui::Icon::Exclamation;
    }
    return shown == LoadIconW(nullptr, IDI_ASTERISK) ? ui::Icon::Information : ui::Icon::None;
}

std::string RealWindow::Text() const
{
    const HWND text = FindStatic(m_window, false);
    return Kind() == WindowKind::Box && text != nullptr ? TextOf(text) : "";
}

std::vector<ControlSeen> RealWindow::Controls() const
{
    const bool isForm = Kind() == WindowKind::Form;
    std::vector<ControlSeen> controls;
    for (const HWND child : ChildrenOf(m_window))
    {
        auto control = ReadControl(child);
        if (control && (isForm || control->kind != ControlKind::Label)) // the text of a box is no label
        {
            controls.push_back(std::move(*control));
        }
    }
    return controls;
}

CellSeen RealWindow::Cell(std::size_t grid, std::size_t row, std::size_t column) const
{
    const HWND list = Usable(m_window, ControlKind::Grid, grid, true);
    std::wstring text(4096, L'\0');
    LVITEMW item{};
    item.iSubItem = static_cast<int>(column);
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    const LRESULT length = Send(list, LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item));
    const CellLooks looks = ReadCellLooks(list, static_cast<int>(row), static_cast<int>(column));
    // A list view that holds no texts may answer through a buffer of its own.
    return {FromWide(std::wstring_view(item.pszText, static_cast<std::size_t>(length))), looks.foreground,
            looks.background, looks.image};
}

void RealWindow::Press(std::size_t button)
{
    if (const HWND pressed = Usable(m_window, ControlKind::Button, button); pressed != nullptr)
    {
        PostMessageW(pressed, BM_CLICK, 0, 0);
    }
}

void RealWindow::SelectRow(std::size_t grid, std::size_t row)
{
    const HWND list = Usable(m_window, ControlKind::Grid, grid);
    if (list == nullptr)
    {
        return;
    }
    LVITEMW item{};
    item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    Send(list, LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
    Send(list, LVM_ENSUREVISIBLE, row, FALSE);
}

void RealWindow::DoubleClickRow(std::size_t grid, std::size_t row)
{
    SelectRow(grid, row);
    const HWND list = Usable(m_window, ControlKind::Grid, grid, true);
    const RECT cell = CellArea(list, static_cast<int>(row), 0);
    const LPARAM point = MAKELPARAM(cell.left + 8, (cell.top + cell.bottom) / 2);
    PostMessageW(list, WM_LBUTTONDBLCLK, MK_LBUTTON, point);
    PostMessageW(list, WM_LBUTTONUP, 0, point);
}

void RealWindow::Type(std::size_t textBox, const std::string& text)
{
    const HWND box = Usable(m_window, ControlKind::TextBox, textBox);
    if (box != nullptr)
    {
        SetFocus(box);
        Send(box, EM_SETSEL, 0, -1);
        Send(box, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(ToWide(text).c_str()));
    }
}

void RealWindow::SetToggle(std::size_t toggle, bool on)
{
    const HWND box = Usable(m_window, ControlKind::Toggle, toggle);
    if (box != nullptr && (Send(box, BM_GETCHECK) == BST_CHECKED) != on)
    {
        PostMessageW(box, BM_CLICK, 0, 0);
    }
}

void RealWindow::ChooseEntry(std::size_t list, std::size_t entry)
{
    const HWND chosen = Usable(m_window, ControlKind::List, list);
    if (chosen != nullptr)
    {
        Send(chosen, CB_SETCURSEL, static_cast<WPARAM>(entry));
        PostMessageW(m_window, WM_COMMAND, static_cast<WPARAM>(MAKELONG(GetDlgCtrlID(chosen), CBN_SELCHANGE)),
                     reinterpret_cast<LPARAM>(chosen));
    }
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

} // namespace vellumo::player
