#include "simulator/screen/windows/real_control.h"

#include "platform/windows/forms/window_message.h"
#include "platform/windows/forms/wrapped_grid_view.h"
#include "platform/windows/system/text.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <algorithm>
#include <array>
#include <optional>

namespace vellumo::screen
{
namespace
{

using windows::FromWide;
using windows::Send;
using Read = std::unique_ptr<ui::Control>;

DWORD StyleOf(HWND window)
{
    return static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
}

// A text of its own is a label; one that names the control behind it has an access key.
bool NamesControl(HWND window)
{
    return HasClass(window, L"Static") && IconOf(window) == nullptr && (StyleOf(window) & SS_NOPREFIX) == 0;
}

// Of a control that is named by the text before it.
std::string NameBefore(HWND window)
{
    const HWND before = GetWindow(window, GW_HWNDPREV);
    return before != nullptr && NamesControl(before) ? TextOf(before) : "";
}

Read ReadStatic(HWND window)
{
    return IconOf(window) != nullptr || NamesControl(window) ? nullptr : std::make_unique<ui::Label>(TextOf(window));
}

Read ReadPushButton(HWND window, bool looksDefault)
{
    const char* const answer = AnswerOf(window);
    auto button = std::make_unique<ui::Button>(answer != nullptr ? answer : TextOf(window));
    // In a form another button shows itself as default while it has the keyboard; the window remembers its own.
    const LRESULT defaultId = Send(GetParent(window), DM_GETDEFID);
    button->isDefault = answer != nullptr
                            ? looksDefault
                            : HIWORD(defaultId) == DC_HASDEFID && LOWORD(defaultId) == GetDlgCtrlID(window);
    return button;
}

Read ReadButton(HWND window)
{
    const auto type = StyleOf(window) & BS_TYPEMASK;
    const bool isOn = Send(window, BM_GETCHECK) == BST_CHECKED;
    if (type == BS_AUTOCHECKBOX)
    {
        auto box = std::make_unique<ui::CheckBox>(TextOf(window));
        box->checked = isOn;
        return box;
    }
    if (type == BS_AUTORADIOBUTTON)
    {
        auto option = std::make_unique<ui::OptionButton>(TextOf(window));
        option->selected = isOn;
        return option;
    }
    return type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON ? ReadPushButton(window, type == BS_DEFPUSHBUTTON)
                                                             : nullptr;
}

Read ReadTextBox(HWND window)
{
    auto box = std::make_unique<ui::TextBox>(NameBefore(window));
    box->value = TextOf(window);
    return box;
}

Read ReadList(HWND window)
{
    auto list = std::make_unique<ui::ComboBox>();
    const LRESULT count = Send(window, CB_GETCOUNT);
    for (LRESULT i = 0; i < count; ++i)
    {
        const auto entry = static_cast<WPARAM>(i);
        std::wstring text(static_cast<std::size_t>(Send(window, CB_GETLBTEXTLEN, entry)), L'\0');
        Send(window, CB_GETLBTEXT, entry, reinterpret_cast<LPARAM>(text.data()));
        list->entries.push_back(FromWide(text));
    }
    list->index = static_cast<int>(Send(window, CB_GETCURSEL));
    return list;
}

Read ReadBar(HWND window)
{
    auto bar = std::make_unique<ui::ProgressBar>();
    bar->value = static_cast<float>(Send(window, PBM_GETPOS));
    bar->maximum = static_cast<float>(Send(window, PBM_GETRANGE, FALSE));
    return bar;
}

Read ReadGrid(HWND window)
{
    auto grid = std::make_unique<ui::Grid>(NameBefore(window));
    const auto header = reinterpret_cast<HWND>(Send(window, LVM_GETHEADER));
    std::array<wchar_t, 256> text{};
    HDITEMW column{};
    column.mask = HDI_TEXT;
    column.pszText = text.data();
    column.cchTextMax = static_cast<int>(text.size());
    for (WPARAM i = 0; Send(header, HDM_GETITEMW, i, reinterpret_cast<LPARAM>(&column)) != FALSE; ++i)
    {
        grid->columns.push_back({"", FromWide(text.data())});
    }
    grid->rows.resize(static_cast<std::size_t>(Send(window, LVM_GETITEMCOUNT)));
    const LRESULT selected = Send(window, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    grid->selected = selected < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(selected));
    return grid;
}

struct Class
{
    const wchar_t* name;
    Read (*read)(HWND window);
};

constexpr std::array classes = {Class{L"Static", ReadStatic},
                                Class{L"Button", ReadButton},
                                Class{L"Edit", ReadTextBox},
                                Class{L"ComboBox", ReadList},
                                Class{PROGRESS_CLASSW, ReadBar},
                                Class{WC_LISTVIEWW, ReadGrid},
                                Class{windows::WrappedGridClass::name, ReadGrid}};

} // namespace

bool HasClass(HWND window, const wchar_t* name)
{
    std::array<wchar_t, 64> own{};
    GetClassNameW(window, own.data(), static_cast<int>(own.size()));
    return CompareStringOrdinal(own.data(), -1, name, -1, TRUE) == CSTR_EQUAL;
}

std::string TextOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return FromWide(text);
}

bool TakesInput(HWND window)
{
    const DWORD both = WS_VISIBLE | WS_TABSTOP;
    return (StyleOf(window) & both) == both && IsWindowEnabled(window) != FALSE;
}

HICON IconOf(HWND window)
{
    const bool isIcon = HasClass(window, L"Static") && (StyleOf(window) & SS_TYPEMASK) == SS_ICON;
    return isIcon ? reinterpret_cast<HICON>(Send(window, STM_GETICON)) : nullptr;
}

const char* AnswerOf(HWND button)
{
    switch (HasClass(button, L"Button") ? GetDlgCtrlID(button) : 0)
    {
    case IDOK:
        return "OK";
    case IDCANCEL:
        return "Cancel";
    case IDRETRY:
        return "Retry";
    case IDYES:
        return "Yes";
    case IDNO:
        return "No";
    default:
        return nullptr;
    }
}

Read ReadControl(HWND window)
{
    const auto* const found =
        std::find_if(classes.begin(), classes.end(), [=](const Class& each) { return HasClass(window, each.name); });
    if (found == classes.end() || (StyleOf(window) & WS_VISIBLE) == 0)
    {
        return nullptr;
    }
    auto control = found->read(window);
    if (control)
    {
        control->enabled = IsWindowEnabled(window) != FALSE;
    }
    return control;
}

} // namespace vellumo::screen
