#include "player/windows/real_window.h"

#include "platform/windows/forms/wrapped_grid_view.h"
#include "platform/windows/system/text.h"
#include "player/windows/cell_looks.h"
#include "player/windows/keyboard.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace vellumo::player
{
namespace
{

using windows::FromWide;
using windows::ToWide;

LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    return SendMessageW(window, message, wParam, lParam);
}

std::wstring ClassOf(HWND window)
{
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

bool HasClass(HWND window, const wchar_t* name)
{
    return CompareStringOrdinal(ClassOf(window).c_str(), -1, name, -1, TRUE) == CSTR_EQUAL;
}

DWORD StyleOf(HWND window)
{
    return static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
}

std::string TextOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return FromWide(text);
}

// Without the mark of the access key; "&&" is a plain "&".
std::string CaptionOf(HWND window)
{
    const std::string marked = TextOf(window);
    std::string caption;
    for (std::size_t i = 0; i < marked.size(); ++i)
    {
        i += marked[i] == '&' && i + 1 < marked.size() ? 1u : 0u;
        caption += marked[i];
    }
    return caption;
}

bool IsEnabled(HWND window)
{
    return IsWindowEnabled(window) != FALSE;
}

DWORD ButtonKind(HWND window)
{
    return HasClass(window, L"Button") ? StyleOf(window) & BS_TYPEMASK : DWORD{BS_GROUPBOX};
}

bool IsButton(HWND window)
{
    const DWORD kind = ButtonKind(window);
    return kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON;
}

bool IsToggle(HWND window)
{
    const DWORD kind = ButtonKind(window);
    return kind == BS_AUTOCHECKBOX || kind == BS_AUTORADIOBUTTON;
}

bool IsIcon(HWND window)
{
    return HasClass(window, L"Static") && (StyleOf(window) & SS_TYPEMASK) == SS_ICON;
}

bool IsText(HWND window)
{
    return HasClass(window, L"Static") && !IsIcon(window);
}

// A text of its own; one that names the control behind it has an access key.
bool IsLabel(HWND window)
{
    return IsText(window) && (StyleOf(window) & SS_NOPREFIX) != 0;
}

bool IsTextBox(HWND window)
{
    return HasClass(window, L"Edit");
}

bool IsList(HWND window)
{
    return HasClass(window, L"ComboBox");
}

bool IsProgressBar(HWND window)
{
    return HasClass(window, PROGRESS_CLASSW);
}

bool IsGrid(HWND window)
{
    return HasClass(window, WC_LISTVIEWW) || HasClass(window, windows::WrappedGridClass::name);
}

bool TakesInput(HWND window)
{
    return IsEnabled(window) && (StyleOf(window) & WS_TABSTOP) != 0;
}

BOOL CALLBACK TakeEdit(HWND window, LPARAM found) noexcept
{
    if (!IsTextBox(window) || IsWindowVisible(window) == FALSE)
    {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

BOOL CALLBACK TakeFileView(HWND window, LPARAM found) noexcept
{
    if (!HasClass(window, L"SHELLDLL_DefView"))
    {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

// A file dialog shows its files in a view that no other dialog has.
bool ShowsFiles(HWND window)
{
    HWND view = nullptr;
    EnumChildWindows(window, &TakeFileView, reinterpret_cast<LPARAM>(&view));
    return view != nullptr;
}

struct StandardButton
{
    int id;
    ui::Answer answer;
};

constexpr std::array standardButtons = {StandardButton{IDOK, ui::Answer::Ok},
                                        StandardButton{IDCANCEL, ui::Answer::Cancel},
                                        StandardButton{IDRETRY, ui::Answer::Retry},
                                        StandardButton{IDYES, ui::Answer::Yes}, StandardButton{IDNO, ui::Answer::No}};

// A box is told by its buttons, which have the system's own identifiers, whatever they read.
std::optional<ui::Answer> StandardAnswer(HWND button)
{
    const auto* const found = std::find_if(standardButtons.begin(), standardButtons.end(),
                                           [&](const StandardButton& each) { return each.id == GetDlgCtrlID(button); });
    return found == standardButtons.end() ? std::nullopt : std::optional(found->answer);
}

} // namespace

bool RealWindow::IsLibraryWindow(HWND window)
{
    return HasClass(window, L"#32770") && IsWindowVisible(window) != FALSE && IsEnabled(window);
}

bool RealWindow::IsWaiting() const
{
    return !Visible(TakesInput).empty();
}

std::vector<HWND> RealWindow::Visible(Filter filter) const
{
    std::vector<HWND> found;
    for (HWND child = GetWindow(m_window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
    {
        if ((StyleOf(child) & WS_VISIBLE) != 0 && filter(child))
        {
            found.push_back(child);
        }
    }
    return found;
}

HWND RealWindow::At(Filter filter, std::size_t position) const
{
    const std::vector<HWND> found = Visible(filter);
    if (position >= found.size())
    {
        throw std::out_of_range("the window has no such control");
    }
    return found[position];
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

WindowKind RealWindow::Kind() const
{
    if (ShowsFiles(m_window))
    {
        return WindowKind::FileDialog;
    }
    const std::vector<HWND> buttons = Visible(IsButton);
    const bool isBox =
        std::any_of(buttons.begin(), buttons.end(), [](HWND button) { return StandardAnswer(button).has_value(); });
    return isBox ? WindowKind::Box : WindowKind::Form;
}

std::string RealWindow::Title() const
{
    return TextOf(m_window);
}

ui::Icon RealWindow::Icon() const
{
    const std::vector<HWND> icons = Visible(IsIcon);
    if (Kind() != WindowKind::Box || icons.empty())
    {
        return ui::Icon::None;
    }
    const auto shown = reinterpret_cast<HICON>(Send(icons.front(), STM_GETICON));
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
    return Kind() == WindowKind::Box ? TextOf(At(IsText, 0)) : "";
}

std::vector<std::string> RealWindow::Labels() const
{
    std::vector<std::string> labels;
    if (Kind() == WindowKind::Form)
    {
        for (const HWND label : Visible(IsLabel))
        {
            labels.push_back(TextOf(label));
        }
    }
    return labels;
}

std::vector<ButtonSeen> RealWindow::Buttons() const
{
    const bool isBox = Kind() == WindowKind::Box;
    // In a form another button shows itself as default while it has the keyboard; the window remembers its own.
    const LRESULT defaultId = Send(m_window, DM_GETDEFID);
    std::vector<ButtonSeen> buttons;
    for (const HWND button : Visible(IsButton))
    {
        const bool isDefault = isBox ? (StyleOf(button) & BS_TYPEMASK) == BS_DEFPUSHBUTTON
                                     : HIWORD(defaultId) == DC_HASDEFID && LOWORD(defaultId) == GetDlgCtrlID(button);
        buttons.push_back({CaptionOf(button), StandardAnswer(button), isDefault, IsEnabled(button)});
    }
    return buttons;
}

std::vector<ToggleSeen> RealWindow::Toggles() const
{
    std::vector<ToggleSeen> toggles;
    for (const HWND toggle : Visible(IsToggle))
    {
        toggles.push_back({CaptionOf(toggle), Send(toggle, BM_GETCHECK) == BST_CHECKED, IsEnabled(toggle)});
    }
    return toggles;
}

std::vector<TextBoxSeen> RealWindow::TextBoxes() const
{
    std::vector<TextBoxSeen> boxes;
    for (const HWND box : Visible(IsTextBox))
    {
        const HWND before = GetWindow(box, GW_HWNDPREV);
        const bool named = before != nullptr && IsText(before) && !IsLabel(before);
        boxes.push_back({named ? CaptionOf(before) : "", TextOf(box), IsEnabled(box)});
    }
    return boxes;
}

std::vector<ListSeen> RealWindow::Lists() const
{
    std::vector<ListSeen> lists;
    for (const HWND list : Visible(IsList))
    {
        ListSeen seen;
        const LRESULT count = Send(list, CB_GETCOUNT);
        for (LRESULT i = 0; i < count; ++i)
        {
            const auto entry = static_cast<WPARAM>(i);
            std::wstring text(static_cast<std::size_t>(Send(list, CB_GETLBTEXTLEN, entry)), L'\0');
            Send(list, CB_GETLBTEXT, entry, reinterpret_cast<LPARAM>(text.data()));
            seen.entries.push_back(FromWide(text));
        }
        seen.index = static_cast<int>(Send(list, CB_GETCURSEL));
        seen.enabled = IsEnabled(list);
        lists.push_back(std::move(seen));
    }
    return lists;
}

std::vector<ProgressSeen> RealWindow::ProgressBars() const
{
    std::vector<ProgressSeen> bars;
    for (const HWND bar : Visible(IsProgressBar))
    {
        bars.push_back(
            {static_cast<double>(Send(bar, PBM_GETPOS)), static_cast<double>(Send(bar, PBM_GETRANGE, FALSE))});
    }
    return bars;
}

std::vector<GridSeen> RealWindow::Grids() const
{
    std::vector<GridSeen> grids;
    for (const HWND grid : Visible(IsGrid))
    {
        GridSeen seen;
        const auto header = reinterpret_cast<HWND>(Send(grid, LVM_GETHEADER));
        std::array<wchar_t, 256> text{};
        HDITEMW column{};
        column.mask = HDI_TEXT;
        column.pszText = text.data();
        column.cchTextMax = static_cast<int>(text.size());
        for (WPARAM i = 0; Send(header, HDM_GETITEMW, i, reinterpret_cast<LPARAM>(&column)) != FALSE; ++i)
        {
            seen.columns.push_back(FromWide(text.data()));
        }
        seen.rowCount = static_cast<std::size_t>(Send(grid, LVM_GETITEMCOUNT));
        const LRESULT selected = Send(grid, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
        if (selected >= 0)
        {
            seen.selected = static_cast<std::size_t>(selected);
        }
        grids.push_back(std::move(seen));
    }
    return grids;
}

CellSeen RealWindow::Cell(std::size_t grid, std::size_t row, std::size_t column) const
{
    const HWND list = At(IsGrid, grid);
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
    if (const HWND pressed = At(IsButton, button); IsEnabled(pressed))
    {
        PostMessageW(pressed, BM_CLICK, 0, 0);
    }
}

void RealWindow::SelectRow(std::size_t grid, std::size_t row)
{
    const HWND list = At(IsGrid, grid);
    if (!IsEnabled(list))
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
    const HWND list = At(IsGrid, grid);
    const RECT cell = CellArea(list, static_cast<int>(row), 0);
    const LPARAM point = MAKELPARAM(cell.left + 8, (cell.top + cell.bottom) / 2);
    PostMessageW(list, WM_LBUTTONDBLCLK, MK_LBUTTON, point);
    PostMessageW(list, WM_LBUTTONUP, 0, point);
}

void RealWindow::Type(std::size_t textBox, const std::string& text)
{
    const HWND box = At(IsTextBox, textBox);
    if (IsEnabled(box))
    {
        SetFocus(box);
        Send(box, EM_SETSEL, 0, -1);
        Send(box, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(ToWide(text).c_str()));
    }
}

void RealWindow::SetToggle(std::size_t toggle, bool on)
{
    const HWND box = At(IsToggle, toggle);
    if (IsEnabled(box) && (Send(box, BM_GETCHECK) == BST_CHECKED) != on)
    {
        PostMessageW(box, BM_CLICK, 0, 0);
    }
}

void RealWindow::ChooseEntry(std::size_t list, int index)
{
    const HWND chosen = At(IsList, list);
    if (IsEnabled(chosen))
    {
        Send(chosen, CB_SETCURSEL, static_cast<WPARAM>(index));
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
    HWND name = nullptr;
    EnumChildWindows(m_window, &TakeEdit, reinterpret_cast<LPARAM>(&name));
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
