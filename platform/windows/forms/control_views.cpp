// The views of all controls but the grids, which have files of their own.
#include "platform/windows/forms/abridged.h"
#include "platform/windows/forms/control_view.h"
#include "platform/windows/forms/grid_view.h"
#include "platform/windows/forms/window_message.h"
#include "platform/windows/forms/wrapped_grid_view.h"
#include "platform/windows/system/text.h"

#include <commctrl.h>

#include <algorithm>
#include <cmath>
#include <variant>

namespace vellumo::windows
{
namespace
{

constexpr int buttonHeight = 23; // all at 96 dots an inch, the sizes that Windows itself uses
constexpr int buttonWidth = 75;
constexpr int checkHeight = 17;
constexpr int editHeight = 21;
constexpr int barHeight = 17;
constexpr int imageGap = 6;

class LabelView final : public ControlView
{
public:
    LabelView(ui::Label& label, const Surface& surface)
        : ControlView(label)
        , m_label(label)
        , m_surface(surface)
    {
        const DWORD cut = label.lines > 1 ? SS_EDITCONTROL : SS_ENDELLIPSIS;
        m_window = TextWindow(surface.MakeChild(L"STATIC", L"", SS_LEFT | SS_NOPREFIX | cut, 0, -1));
        Send(m_window.Get(), WM_SETFONT, reinterpret_cast<WPARAM>(surface.FontFor(label.strong)), FALSE);
        if (label.image != ui::Image::None)
        {
            m_image = surface.MakeChild(L"STATIC", L"", SS_ICON | SS_REALSIZECONTROL, 0, -1);
            Send(m_image, STM_SETICON, reinterpret_cast<WPARAM>(surface.IconFor(label.image)));
        }
    }
    [[nodiscard]] LayoutItem Needs() const override
    {
        const int width = m_label.lines > 1 ? 0 : m_surface.TextWidth(Abridged(m_label.text), m_label.strong, false);
        const int image = m_image == nullptr ? 0 : m_surface.ImageSize();
        return {.size = {ImageRoom() + width, std::max(image, m_label.lines * m_surface.LineHeight())},
                .sameLine = m_label.sameLine,
                .stretches = true};
    }
    void Place(const RECT& place) override
    {
        const int height = m_label.lines * m_surface.LineHeight();
        const LONG top = place.top + (place.bottom - place.top - height) / 2;
        m_window.Place(place.left + ImageRoom(), top, place.right, top + height);
        if (m_image != nullptr)
        {
            const int size = m_surface.ImageSize();
            SetWindowPos(m_image, nullptr, place.left, place.top, size, size, SWP_NOZORDER | SWP_NOACTIVATE);
        }
    }
    [[nodiscard]] HWND Window() const noexcept override { return m_window.Get(); }
    void Rescale() override
    {
        if (m_image != nullptr)
        {
            Send(m_image, STM_SETICON, reinterpret_cast<WPARAM>(m_surface.IconFor(m_label.image)));
        }
    }
    void Update() override { m_window.Update(m_label); }

private:
    [[nodiscard]] int ImageRoom() const
    {
        return m_image == nullptr ? 0 : m_surface.ImageSize() + m_surface.Pixels(imageGap);
    }

    ui::Label& m_label;
    const Surface& m_surface;
    TextWindow m_window;
    HWND m_image = nullptr;
};

class TextBoxView final : public ControlView
{
public:
    TextBoxView(ui::TextBox& box, const Surface& surface, int id)
        : ControlView(box)
        , m_box(box)
        , m_surface(surface)
    {
        m_caption = TextWindow(surface.MakeChild(L"STATIC", L"", SS_LEFT | SS_CENTERIMAGE, 0, -1));
        const DWORD reading = box.readOnly ? ES_READONLY : 0;
        const DWORD lines = IsTall() ? ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL : ES_AUTOHSCROLL;
        m_edit =
            TextWindow(surface.MakeChild(L"EDIT", L"", ES_LEFT | reading | lines | WS_TABSTOP, WS_EX_CLIENTEDGE, id));
        if (box.list != nullptr || IsTall())
        {
            SeeKeysFirst();
        }
    }
    [[nodiscard]] HWND Input() const noexcept override { return m_edit.Get(); }
    [[nodiscard]] LayoutItem Needs() const override
    {
        const int boxes = m_surface.Pixels(150);
        return {.size = IsTall() ? SIZE{boxes, CaptionHeight() + BoxHeight()}
                                 : SIZE{CaptionWidth() + boxes, m_surface.Pixels(editHeight)},
                .sameLine = m_box.sameLine,
                .stretches = true};
    }
    void Place(const RECT& place) override
    {
        if (IsTall())
        {
            m_caption.Place(place.left, place.top, place.right, place.top + CaptionHeight());
            m_edit.Place(place.left, place.top + CaptionHeight(), place.right, place.bottom);
            return;
        }
        const LONG middle = std::min(place.right, place.left + CaptionWidth());
        m_caption.Place(place.left, place.top, middle, place.bottom);
        m_edit.Place(middle, place.top, place.right, place.bottom);
    }
    void Update() override
    {
        m_caption.Update(m_box);
        m_updating = true;
        m_edit.UpdateText(m_box.value);
        m_updating = false;
        m_edit.UpdateState(m_box);
    }
    Event OnCommand(WORD code) override
    {
        if (code != EN_CHANGE || m_updating)
        {
            return Event::None;
        }
        std::wstring typed(static_cast<std::size_t>(GetWindowTextLengthW(m_edit.Get())) + 1, L'\0');
        typed.resize(
            static_cast<std::size_t>(GetWindowTextW(m_edit.Get(), typed.data(), static_cast<int>(typed.size()))));
        m_box.value = FromWide(typed);
        m_edit.Note(m_box.value);
        return Event::Changed;
    }

private:
    [[nodiscard]] bool IsTall() const noexcept { return m_box.lines > 1; }
    [[nodiscard]] int CaptionHeight() const { return m_surface.LineHeight() + m_surface.Pixels(2); }
    [[nodiscard]] int BoxHeight() const { return m_box.lines * m_surface.LineHeight() + m_surface.Pixels(6); }
    // The window that the box belongs to knows the list and gets the keys that move in it. A box of several lines
    // would keep Enter, Escape and Tab to itself.
    void SeeKeysFirst()
    {
        const LONG_PTR procedure = reinterpret_cast<LONG_PTR>(&TextBoxView::EditProcedure);
        SetWindowLongPtrW(m_edit.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        m_editProcedure = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(m_edit.Get(), GWLP_WNDPROC, procedure));
    }
    static LRESULT CALLBACK EditProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
    {
        const auto* const self = reinterpret_cast<const TextBoxView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        const bool listKey = wParam == VK_UP || wParam == VK_DOWN || wParam == VK_PRIOR || wParam == VK_NEXT;
        if (message == WM_KEYDOWN && listKey && self->m_box.list != nullptr)
        {
            return Send(GetParent(window), listKeyMessage, wParam, GetDlgCtrlID(window));
        }
        const LRESULT answer = CallWindowProcW(self->m_editProcedure, window, message, wParam, lParam);
        return message == WM_GETDLGCODE ? answer & ~LRESULT{DLGC_WANTALLKEYS | DLGC_WANTTAB} : answer;
    }
    [[nodiscard]] int CaptionWidth() const
    {
        return m_surface.TextWidth(ToWide(m_box.text), false, true) + m_surface.Pixels(6);
    }

    ui::TextBox& m_box;
    const Surface& m_surface;
    TextWindow m_caption;
    TextWindow m_edit;
    WNDPROC m_editProcedure = nullptr;
    bool m_updating = false;
};

class CheckBoxView final : public ControlView
{
public:
    CheckBoxView(ui::CheckBox& box, const Surface& surface, int id)
        : ControlView(box)
        , m_box(box)
        , m_surface(surface)
    {
        m_window = TextWindow(surface.MakeChild(L"BUTTON", L"", BS_AUTOCHECKBOX | WS_TABSTOP, 0, id));
    }
    [[nodiscard]] HWND Input() const noexcept override { return m_window.Get(); }
    [[nodiscard]] LayoutItem Needs() const override
    {
        return {.size = {m_surface.TextWidth(ToWide(m_box.text), false, true) + m_surface.Pixels(24),
                         m_surface.Pixels(checkHeight)},
                .sameLine = m_box.sameLine,
                .leads = m_box.explanation != nullptr};
    }
    void Place(const RECT& place) override { m_window.Place(place.left, place.top, place.right, place.bottom); }
    void Update() override
    {
        m_window.Update(m_box);
        const WPARAM state = m_box.checked ? BST_CHECKED : BST_UNCHECKED;
        if (static_cast<WPARAM>(Send(m_window.Get(), BM_GETCHECK)) != state)
        {
            Send(m_window.Get(), BM_SETCHECK, state);
        }
    }
    Event OnCommand(WORD code) override
    {
        if (code != BN_CLICKED)
        {
            return Event::None;
        }
        m_box.checked = Send(m_window.Get(), BM_GETCHECK) == BST_CHECKED;
        return Event::Clicked;
    }

private:
    ui::CheckBox& m_box;
    const Surface& m_surface;
    TextWindow m_window;
};

class OptionView final : public ControlView
{
public:
    OptionView(ui::OptionButton& option, const Surface& surface, int id, bool startsGroup)
        : ControlView(option)
        , m_option(option)
        , m_surface(surface)
    {
        const DWORD style = BS_AUTORADIOBUTTON | WS_TABSTOP | (startsGroup ? WS_GROUP : 0);
        m_window = TextWindow(surface.MakeChild(L"BUTTON", L"", style, 0, id));
    }
    [[nodiscard]] HWND Input() const noexcept override { return m_window.Get(); }
    [[nodiscard]] LayoutItem Needs() const override
    {
        return {.size = {m_surface.TextWidth(ToWide(m_option.text), false, true) + m_surface.Pixels(24),
                         m_surface.Pixels(checkHeight)},
                .sameLine = m_option.sameLine,
                .leads = true};
    }
    void Place(const RECT& place) override { m_window.Place(place.left, place.top, place.right, place.bottom); }
    void Update() override
    {
        m_window.Update(m_option);
        Send(m_window.Get(), BM_SETCHECK, m_option.selected ? BST_CHECKED : BST_UNCHECKED);
    }
    Event OnCommand(WORD code) override
    {
        // Windows says "clicked" also when the keyboard comes back to an option.
        const bool chosen = code == BN_CLICKED && Send(m_window.Get(), BM_GETCHECK) == BST_CHECKED;
        return chosen && !m_option.selected ? Event::Clicked : Event::None;
    }

private:
    ui::OptionButton& m_option;
    const Surface& m_surface;
    TextWindow m_window;
};

class ComboBoxView final : public ControlView
{
public:
    ComboBoxView(ui::ComboBox& list, const Surface& surface, int id)
        : ControlView(list)
        , m_list(list)
        , m_surface(surface)
        , m_window(surface.MakeChild(L"COMBOBOX", L"", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP | WS_GROUP, 0, id))
    {
        for (const std::string& entry : list.entries)
        {
            const std::wstring text = ToWide(entry);
            Send(m_window.Get(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
        }
    }
    [[nodiscard]] HWND Input() const noexcept override { return m_window.Get(); }
    [[nodiscard]] LayoutItem Needs() const override
    {
        int widest = 0;
        for (const std::string& entry : m_list.entries)
        {
            widest = std::max(widest, m_surface.TextWidth(ToWide(entry), false, false));
        }
        return {.size = {widest + m_surface.Metric(SM_CXVSCROLL) + m_surface.Pixels(16), m_surface.Pixels(editHeight)},
                .sameLine = m_list.sameLine,
                .stretches = true};
    }
    // The height that Windows wants is the one with the list dropped down.
    void Place(const RECT& place) override
    {
        m_window.Place(place.left, place.top, place.right, place.bottom + rowsDropped * m_surface.LineHeight());
    }
    void Update() override
    {
        m_window.UpdateState(m_list);
        if (Send(m_window.Get(), CB_GETCURSEL) != m_list.index)
        {
            Send(m_window.Get(), CB_SETCURSEL, static_cast<WPARAM>(m_list.index));
        }
    }
    Event OnCommand(WORD code) override
    {
        if (code != CBN_SELCHANGE)
        {
            return Event::None;
        }
        m_list.index = static_cast<int>(Send(m_window.Get(), CB_GETCURSEL));
        return Event::Changed;
    }

private:
    static constexpr int rowsDropped = 12;

    ui::ComboBox& m_list;
    const Surface& m_surface;
    TextWindow m_window;
};

class ButtonView final : public ControlView
{
public:
    ButtonView(ui::Button& button, const Surface& surface, int id, bool startsGroup)
        : ControlView(button)
        , m_button(button)
        , m_surface(surface)
    {
        const DWORD group = startsGroup ? WS_GROUP : 0;
        m_window = TextWindow(surface.MakeChild(L"BUTTON", L"", BS_PUSHBUTTON | WS_TABSTOP | group, 0, id));
    }
    [[nodiscard]] HWND Input() const noexcept override { return m_window.Get(); }
    [[nodiscard]] LayoutItem Needs() const override
    {
        const int width = m_surface.TextWidth(ToWide(m_button.text), false, true) + m_surface.Pixels(24);
        return {.size = {std::max(width, m_surface.Pixels(buttonWidth)), m_surface.Pixels(buttonHeight)},
                .sameLine = m_button.sameLine,
                .isButton = true,
                .leads = m_button.explanation != nullptr};
    }
    void Place(const RECT& place) override { m_window.Place(place.left, place.top, place.right, place.bottom); }
    void Update() override
    {
        m_window.Update(m_button);
        if (m_isDefault != m_button.isDefault)
        {
            m_isDefault = m_button.isDefault;
            ShowWhetherDefault();
        }
    }
    Event OnCommand(WORD code) override { return code == BN_CLICKED ? Event::Clicked : Event::None; }

private:
    // The window knows which button Enter presses, the button how it looks.
    void ShowWhetherDefault() const
    {
        if (m_isDefault)
        {
            Send(m_surface.Window(), DM_SETDEFID, static_cast<WPARAM>(GetDlgCtrlID(m_window.Get())));
        }
        Send(m_window.Get(), BM_SETSTYLE, m_isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
    }

    ui::Button& m_button;
    const Surface& m_surface;
    TextWindow m_window;
    bool m_isDefault = false;
};

class ProgressBarView final : public ControlView
{
public:
    ProgressBarView(ui::ProgressBar& bar, const Surface& surface)
        : ControlView(bar)
        , m_bar(bar)
        , m_surface(surface)
    {
        m_window = TextWindow(surface.MakeChild(PROGRESS_CLASSW, L"", 0, 0, -1));
    }
    [[nodiscard]] HWND Window() const noexcept override { return m_window.Get(); }
    [[nodiscard]] LayoutItem Needs() const override
    {
        return {.size = {m_surface.Pixels(100), m_surface.Pixels(barHeight)},
                .sameLine = m_bar.sameLine,
                .stretches = true};
    }
    void Place(const RECT& place) override { m_window.Place(place.left, place.top, place.right, place.bottom); }
    void Update() override
    {
        m_window.UpdateState(m_bar);
        // In the form's own units; a bar without a maximum is empty.
        Send(m_window.Get(), PBM_SETRANGE32, 0, std::max(1L, std::lround(m_bar.maximum)));
        Send(m_window.Get(), PBM_SETPOS, m_bar.maximum > 0 ? static_cast<WPARAM>(std::lround(m_bar.value)) : 0);
    }

private:
    ui::ProgressBar& m_bar;
    const Surface& m_surface;
    TextWindow m_window;
};

struct MakeView
{
    const Surface& surface;
    int id;
    bool startsGroup;

    using View = std::unique_ptr<ControlView>;

    View operator()(ui::Label* label) const { return std::make_unique<LabelView>(*label, surface); }
    View operator()(ui::TextBox* box) const { return std::make_unique<TextBoxView>(*box, surface, id); }
    View operator()(ui::CheckBox* box) const { return std::make_unique<CheckBoxView>(*box, surface, id); }
    View operator()(ui::OptionButton* option) const
    {
        return std::make_unique<OptionView>(*option, surface, id, startsGroup);
    }
    View operator()(ui::ComboBox* list) const { return std::make_unique<ComboBoxView>(*list, surface, id); }
    View operator()(ui::Grid* grid) const
    {
        return grid->wraps ? View(std::make_unique<WrappedGridView>(*grid, surface, id))
                           : View(std::make_unique<GridView>(*grid, surface, id));
    }
    View operator()(ui::ProgressBar* bar) const { return std::make_unique<ProgressBarView>(*bar, surface); }
    View operator()(ui::Button* button) const
    {
        return std::make_unique<ButtonView>(*button, surface, id, startsGroup);
    }
};

} // namespace

std::unique_ptr<ControlView> MakeControlView(ui::Control& control, const Surface& surface, int id, bool startsGroup)
{
    return std::visit(MakeView{surface, id, startsGroup}, control.Actual());
}

} // namespace vellumo::windows
