#include "platform/windows/forms/win32_desktop.h"

#include "host/fault.h"
#include "platform/windows/forms/abridged.h"
#include "platform/windows/forms/form_window.h"
#include "platform/windows/forms/modal.h"
#include "platform/windows/system/text.h"

#include <commdlg.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace vellumo::windows
{
namespace
{

constexpr std::size_t longestPath = 4096;

UINT IconFlag(ui::Icon icon)
{
    switch (icon)
    {
    case ui::Icon::Critical:
        return MB_ICONHAND;
    case ui::Icon::Exclamation:
        return MB_ICONEXCLAMATION;
    case ui::Icon::Information:
        return MB_ICONASTERISK;
    case ui::Icon::None:
        break;
    }
    return 0;
}

struct ButtonSet
{
    ui::Buttons buttons;
    UINT flag;
    ui::Answer closed; // when the box went away without an answer
};

constexpr std::array buttonSets = {
    ButtonSet{ui::Buttons::Ok, MB_OK, ui::Answer::Ok},
    ButtonSet{ui::Buttons::YesNo, MB_YESNO, ui::Answer::No},
    ButtonSet{ui::Buttons::YesNoCancel, MB_YESNOCANCEL, ui::Answer::Cancel},
    ButtonSet{ui::Buttons::RetryCancel, MB_RETRYCANCEL, ui::Answer::Cancel},
};

ui::Answer ToAnswer(int button, const ButtonSet& set)
{
    switch (button)
    {
    case IDOK:
        return ui::Answer::Ok;
    case IDCANCEL:
        return set.closed;
    case IDRETRY:
        return ui::Answer::Retry;
    case IDYES:
        return ui::Answer::Yes;
    case IDNO:
        return ui::Answer::No;
    default: // no box could be shown
        return set.closed;
    }
}

} // namespace

ui::Answer Win32Desktop::ShowBox(const ui::Prompt& prompt)
{
    DrawOpenForms();
    const auto* const set = std::find_if(buttonSets.begin(), buttonSets.end(),
                                         [&](const ButtonSet& each) { return each.buttons == prompt.buttons; });
    const auto defaultButton = static_cast<UINT>(std::clamp(prompt.defaultButton, 1, 3) - 1) * MB_DEFBUTTON2;
    const HWND owner = ModalOwner();
    const OthersDisabled others(owner);
    const CommonControls::Scope scope(Controls());
    const int button = MessageBoxW(owner, Abridged(prompt.text).c_str(), Abridged(prompt.title).c_str(),
                                   set->flag | IconFlag(prompt.icon) | defaultButton);
    return ToAnswer(button, *set);
}

void Win32Desktop::ShowModal(ui::Form& form)
{
    DrawOpenForms();
    FormWindow window(form);
    m_open.push_back(&window);
    const struct Closing
    {
        std::vector<FormWindow*>& open;
        ~Closing() { open.pop_back(); }
    } closing{m_open};
    const CommonControls::Scope scope(Controls());
    window.ShowModal();
}

std::optional<std::string> Win32Desktop::AskFile(const std::string& title, const std::string& filter)
{
    DrawOpenForms();
    const std::wstring wideTitle = ToWide(title);
    std::wstring wideFilter = ToWide(filter) + L'\0'; // ends with an empty entry
    std::replace(wideFilter.begin(), wideFilter.end(), L'|', L'\0');
    std::wstring path(longestPath, L'\0');
    OPENFILENAMEW question{};
    question.lStructSize = sizeof question;
    question.hwndOwner = ModalOwner();
    question.lpstrTitle = wideTitle.c_str();
    question.lpstrFilter = wideFilter.c_str();
    question.lpstrFile = path.data();
    question.nMaxFile = static_cast<DWORD>(path.size());
    // What the file must be is for the caller to say, in his own words.
    question.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    const OthersDisabled others(question.hwndOwner);
    const CommonControls::Scope scope(Controls());
    if (GetOpenFileNameW(&question) == FALSE)
    {
        return std::nullopt;
    }
    return FromWide(path.c_str());
}

const CommonControls& Win32Desktop::Controls()
{
    return m_controls ? *m_controls : m_controls.emplace();
}

void Win32Desktop::DrawOpenForms()
{
    for (FormWindow* window : m_open)
    {
        window->DrawNow();
    }
}

} // namespace vellumo::windows
