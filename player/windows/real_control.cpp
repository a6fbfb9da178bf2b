#include "player/windows/real_control.h"

#include "platform/windows/forms/window_message.h"
#include "platform/windows/forms/wrapped_grid_view.h"
#include "platform/windows/system/text.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <algorithm>
#include <array>

namespace vellumo::player
{
namespace
{

using windows::FromWide;
using windows::Send;

std::wstring ClassOf(HWND window)
{
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

DWORD StyleOf(HWND window)
{
    return static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
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

std::optional<ControlKind> KindOfButton(DWORD type)
{
    switch (type)
    {
    case BS_PUSHBUTTON:
    case BS_DEFPUSHBUTTON:
        return ControlKind::Button;
    case BS_AUTOCHECKBOX:
    case BS_AUTORADIOBUTTON:
        return ControlKind::Toggle;
    default:
        return std::nullopt;
    }
}

// A text of its own is a label; one that names the control behind it has an access key.
bool NamesControl(HWND window)
{
    return HasClass(window, L"Static") && (StyleOf(window) & SS_TYPEMASK) != SS_ICON &&
           (StyleOf(window) & SS_NOPREFIX) == 0;
}

std::optional<ControlKind> KindOf(HWND window)
{
    if (HasClass(window, L"Button"))
    {
        return KindOfButton(StyleOf(window) & BS_TYPEMASK);
    }
    if (HasClass(window, L"Static"))
    {
        const bool isIcon = (StyleOf(window) & SS_TYPEMASK) == SS_ICON;
        return isIcon || NamesControl(window) ? std::nullopt : std::optional(ControlKind::Label);
    }
    struct Class
    {
        const wchar_t* name;
        ControlKind kind;
    };
    constexpr std::array classes = {Class{L"Edit", ControlKind::TextBox}, Class{L"ComboBox", ControlKind::List},
                                    Class{PROGRESS_CLASSW, ControlKind::ProgressBar},
                                    Class{WC_LISTVIEWW, ControlKind::Grid},
                                    Class{windows::WrappedGridClass::name, ControlKind::Grid}};
    const auto* const found =
        std::find_if(classes.begin(), classes.end(), [=](const Class& each) { return HasClass(window, each.name); });
    return found == classes.end() ? std::nullopt : std::optional(found->kind);
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

void ReadButton(HWND button, ControlSeen& seen)
{
    // In a form another button shows itself as default while it has the keyboard; the window remembers its own.
    const LRESULT defaultId = Send(GetParent(button), DM_GETDEFID);
    seen.answer = StandardAnswer(button);
    seen.isDefault = seen.answer ? (StyleOf(button) & BS_TYPEMASK) == BS_DEFPUSHBUTTON
                                 : HIWORD(defaultId) == DC_HASDEFID && LOWORD(defaultId) == GetDlgCtrlID(button);
}

void ReadList(HWND list, ControlSeen& seen)
{
    const LRESULT count = Send(list, CB_GETCOUNT);
    for (LRESULT i = 0; i < count; ++i)
    {
        const auto entry = static_cast<WPARAM>(i);
        std::wstring text(static_cast<std::size_t>(Send(list, CB_GETLBTEXTLEN, entry)), L'\0');
        Send(list, CB_GETLBTEXT, entry, reinterpret_cast<LPARAM>(text.data()));
        seen.entries.push_back(FromWide(text));
    }
    const LRESULT selected = Send(list, CB_GETCURSEL);
    seen.selected = selected < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(selected));
}

void ReadGrid(HWND grid, ControlSeen& seen)
{
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
    seen.selected = selected < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(selected));
}

} // namespace

bool HasClass(HWND window, const wchar_t* name)
{
    return CompareStringOrdinal(ClassOf(window).c_str(), -1, name, -1, TRUE) == CSTR_EQUAL;
}

bool IsShown(HWND window)
{
    return (StyleOf(window) & WS_VISIBLE) != 0;
}

bool TakesInput(HWND window)
{
    return IsShown(window) && IsWindowEnabled(window) != FALSE && (StyleOf(window) & WS_TABSTOP) != 0;
}

bool IsIcon(HWND window)
{
    return HasClass(window, L"Static") && (StyleOf(window) & SS_TYPEMASK) == SS_ICON;
}

std::string TextOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return FromWide(text);
}

std::optional<ControlSeen> ReadControl(HWND window)
{
    const auto kind = KindOf(window);
    if (!kind || !IsShown(window))
    {
        return std::nullopt;
    }
    ControlSeen seen;
    seen.kind = *kind;
    seen.enabled = IsWindowEnabled(window) != FALSE;
    const HWND before = GetWindow(window, GW_HWNDPREV);
    switch (*kind)
    {
    case ControlKind::Label:
        seen.caption = TextOf(window);
        break;
    case ControlKind::Button:
        seen.caption = CaptionOf(window);
        ReadButton(window, seen);
        break;
    case ControlKind::Toggle:
        seen.caption = CaptionOf(window);
        seen.on = Send(window, BM_GETCHECK) == BST_CHECKED;
        break;
    case ControlKind::TextBox:
        seen.caption = before != nullptr && NamesControl(before) ? CaptionOf(before) : "";
        seen.value = TextOf(window);
        break;
    case ControlKind::List:
        ReadList(window, seen);
        break;
    case ControlKind::ProgressBar:
        seen.position = static_cast<double>(Send(window, PBM_GETPOS));
        seen.maximum = static_cast<double>(Send(window, PBM_GETRANGE, FALSE));
        break;
    case ControlKind::Grid:
        ReadGrid(window, seen);
        break;
    }
    return seen;
}

} // namespace vellumo::player
