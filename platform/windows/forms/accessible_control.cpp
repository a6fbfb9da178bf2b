#include "platform/windows/forms/accessible_control.h"

#include "platform/windows/forms/abridged.h"
#include "platform/windows/forms/grid_parts.h"
#include "platform/windows/forms/window_message.h"
#include "platform/windows/system/text.h"

#include <cmath>
#include <variant>

namespace vellumo::windows
{
namespace
{

RECT PlaceOf(HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

LONG StateOf(HWND window)
{
    const bool takesKeys = (GetWindowLongPtrW(window, GWL_STYLE) & WS_TABSTOP) != 0;
    return (IsWindowEnabled(window) == FALSE ? STATE_SYSTEM_UNAVAILABLE
            : takesKeys                      ? STATE_SYSTEM_FOCUSABLE
                                             : 0) |
           (GetFocus() == window ? STATE_SYSTEM_FOCUSED : 0) |
           (IsWindowVisible(window) == FALSE ? STATE_SYSTEM_INVISIBLE : 0);
}

// What only that kind of control has to say.
struct AddFacts
{
    AccessibleFacts& facts;

    void operator()(const ui::Label*) const
    {
        facts.role = ROLE_SYSTEM_STATICTEXT;
        facts.state |= STATE_SYSTEM_READONLY;
    }
    void operator()(const ui::TextBox* box) const
    {
        facts.role = ROLE_SYSTEM_TEXT;
        facts.value = Abridged(box->value);
    }
    void operator()(const ui::CheckBox* box) const
    {
        facts.role = ROLE_SYSTEM_CHECKBUTTON;
        facts.state |= box->checked ? STATE_SYSTEM_CHECKED : 0;
        facts.action = box->checked ? L"Togli la spunta" : L"Metti la spunta";
    }
    void operator()(const ui::OptionButton* option) const
    {
        facts.role = ROLE_SYSTEM_RADIOBUTTON;
        facts.state |= option->selected ? STATE_SYSTEM_CHECKED : 0;
        facts.action = L"Scegli";
    }
    void operator()(const ui::ComboBox* list) const
    {
        facts.role = ROLE_SYSTEM_COMBOBOX;
        facts.state |= STATE_SYSTEM_HASPOPUP;
        facts.value = list->index >= 0 && static_cast<std::size_t>(list->index) < list->entries.size()
                          ? ToWide(list->entries[static_cast<std::size_t>(list->index)])
                          : L"";
    }
    void operator()(const ui::Grid*) const { facts.role = ROLE_SYSTEM_TABLE; }
    void operator()(const ui::ProgressBar* bar) const
    {
        facts.role = ROLE_SYSTEM_PROGRESSBAR;
        facts.state |= STATE_SYSTEM_READONLY;
        facts.value = bar->maximum > 0 ? std::to_wstring(std::lround(100 * bar->value / bar->maximum)) + L"%" : L"0%";
    }
    void operator()(const ui::Button* button) const
    {
        facts.role = ROLE_SYSTEM_PUSHBUTTON;
        facts.state |= button->isDefault ? STATE_SYSTEM_DEFAULT : 0;
        facts.action = L"Premi";
    }
};

} // namespace

std::wstring NameOf(const std::string& caption)
{
    const std::wstring marked = Abridged(caption);
    std::wstring name;
    for (std::size_t i = 0; i < marked.size(); ++i)
    {
        i += marked[i] == L'&' && i + 1 < marked.size() ? 1u : 0u;
        name += marked[i];
    }
    return name;
}

std::wstring ShortcutOf(const std::string& caption)
{
    const std::wstring marked = Abridged(caption);
    for (std::size_t i = marked.find(L'&'); i != std::wstring::npos && i + 1 < marked.size();
         i = marked.find(L'&', i + 2))
    {
        if (marked[i + 1] != L'&')
        {
            std::wstring key(1, marked[i + 1]);
            CharUpperBuffW(key.data(), 1);
            return L"Alt+" + key;
        }
    }
    return L"";
}

AccessibleFacts AccessibleControl::Facts(LONG) const
{
    const bool isLabel = ui::As<ui::Label>(m_control) != nullptr;
    AccessibleFacts facts;
    facts.name = isLabel ? Abridged(m_control.text) : NameOf(m_namedBy.text);
    facts.shortcut = isLabel ? L"" : ShortcutOf(m_control.text);
    facts.state = StateOf(Window());
    facts.place = PlaceOf(Window());
    facts.description = m_control.explanation != nullptr ? Abridged(m_control.explanation->text) : L"";
    std::visit(AddFacts{facts}, m_control.Actual());
    return facts;
}

// Posted, so that whoever asks does not wait for a window that opens.
void AccessibleControl::Act()
{
    PostMessageW(Window(), BM_CLICK, 0, 0);
}

AccessibleFacts AccessibleStatic::Facts(LONG) const
{
    AccessibleFacts facts;
    facts.role = m_image == ui::Image::None ? ROLE_SYSTEM_STATICTEXT : ROLE_SYSTEM_GRAPHIC;
    facts.name = WordFor(m_image);
    if (m_image == ui::Image::None)
    {
        std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(Window())) + 1, L'\0');
        text.resize(static_cast<std::size_t>(GetWindowTextW(Window(), text.data(), static_cast<int>(text.size()))));
        facts.name = NameOf(FromWide(text));
    }
    facts.state = StateOf(Window()) | STATE_SYSTEM_READONLY | (facts.name.empty() ? STATE_SYSTEM_INVISIBLE : 0);
    facts.place = PlaceOf(Window());
    return facts;
}

} // namespace vellumo::windows
