// The views of the controls that take few lines; grids and boxes for text have files of their own.
#include "platform/windows/forms/abridged.h"
#include "platform/windows/forms/control_view.h"
#include "platform/windows/forms/grid_view.h"
#include "platform/windows/forms/text_box_view.h"
#include "platform/windows/forms/window_message.h"
#include "platform/windows/forms/wrapped_grid_view.h"
#include "platform/windows/system/text.h"

#include <commctrl.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <variant>

namespace vellumo::windows
{
namespace
{

constexpr int buttonHeight = 23; // all at 96 dots an inch, the sizes that Windows itself uses
constexpr int buttonWidth = 75;
constexpr int checkHeight = 17;
constexpr int barHeight = 17;
constexpr int imageGap = 6;

void ShowCheck(HWND button, bool checked)
{
    const WPARAM state = checked ? BST_CHECKED : BST_UNCHECKED;
    if (static_cast<WPARAM>(Send(button, BM_GETCHECK)) != state)
    {
        Send(button, BM_SETCHECK, state); // draws anew
    }
}

class LabelView final : public ControlView
{
public:
    LabelView(ui::Label& label, const Surface& surface)
        : ControlView(label)
        , m_label(label)
        , m_surface(surface)
        , m_window(surface,
                   {.style = SS_LEFT | SS_NOPREFIX | (label.lines > 1 ? DWORD{SS_EDITCONTROL} : DWORD{SS_ENDELLIPSIS}),
                    .strong = label.strong})
    {
        m_window.Update(label);
        if (label.image != ui::Image::None)
        {
            m_image.emplace(surface, ChildKind{.style = SS_ICON | SS_REALSIZECONTROL});
        }
    }
    [[nodiscard]] LayoutItem Needs() const override
    {
        const int width = m_label.lines > 1 ? 0 : m_surface.TextWidth(Abridged(m_label.text), m_label.strong, false);
        const int image = m_image ? m_surface.ImageSize() : 0;
        return {.size = {ImageRoom() + width, std::max(image, m_label.lines * m_surface.LineHeight())},
                .sameLine = m_label.sameLine,
                .stretches = true};
    }
    void Place(const RECT& place) override
    {
        const int height = m_label.lines * m_surface.LineHeight();
        const LONG top = place.top + (place.bottom - place.top - height) / 2;
        m_window.Place(place.left + ImageRoom(), top, place.right, top + height);
        const int size = m_surface.ImageSize();
        if (m_image && m_image->Place(place.left, place.top, place.left + size, place.top + size))
        {
            Rescale();
        }
    }
    [[nodiscard]] HWND Window() const noexcept override { return m_window.Get(); }
    void Rescale() override
    {
        if (m_image)
        {
            Send(m_image->Get(), STM_SETICON, reinterpret_cast<WPARAM>(m_surface.IconFor(m_label.image)));
        }
    }
    void Update() override { m_window.Update(m_label); }

private:
    [[nodiscard]] int ImageRoom() const { return m_image ? m_surface.ImageSize() + m_surface.Pixels(imageGap) : 0; }

    ui::Label& m_label;
    const Surface& m_surface;
    TextWindow m_window;
    std::optional<TextWindow> m_image;
};

class CheckBoxView final : public ControlView
{
public:
    CheckBoxView(ui::CheckBox& box, const Surface& surface, int id)
        : ControlView(box)
        , m_box(box)
        , m_surface(surface)
        , m_window(surface, {.windowClass = L"BUTTON", .style = BS_AUTOCHECKBOX | WS_TABSTOP, .id = id})
    {
        m_window.Update(box);
    }
    [[nodiscard]] HWND Input() const noexcept override { return m_window.Get(); }
    [[nodiscard]] LayoutItem Needs() const override
    {
        return {.size = {m_surface.TextWidth(ToWide(m_box.text), false, true) + m_surface.Pixels(24),
                         m_surface.Pixels(checkHeight)},
                .sameLine = m_box.sameLine,
                .leads = m_box.explanation != nullptr};
    }
    void Place(const RECT& place) override { m_window.Place(place); }
    void Update() override
    {
        m_window.Update(m_box);
        ShowCheck(m_window.Get(), m_box.checked);
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
        , m_window(surface, {.windowClass = L"BUTTON",
                             .style = BS_AUTORADIOBUTTON | (option.selected ? DWORD{WS_TABSTOP} : 0) |
                                      (startsGroup ? DWORD{WS_GROUP} : 0),
                             .id = id})
    {
        m_window.Update(option);
    }
    [[nodiscard]] HWND Input() const noexcept override { return m_window.Get(); }
    [[nodiscard]] LayoutItem Needs() const override
    {
        return {.size = {m_surface.TextWidth(ToWide(m_option.text), false, true) + m_surface.Pixels(24),
                         m_surface.Pixels(checkHeight)},
                .sameLine = m_option.sameLine,
                .leads = true};
    }
    void Place(const RECT& place) override { m_window.Place(place); }
    void Update() override
    {
        m_window.Update(m_option);
        ShowCheck(m_window.Get(), m_option.selected);
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
        , m_window(
              surface,
              {.windowClass = L"COMBOBOX", .style = CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP | WS_GROUP, .id = id})
    {
        m_window.UpdateState(list);
    }
    [[nodiscard]] HWND Input() const noexcept override { return m_window.Get(); }
    [[nodiscard]] LayoutItem Needs() const override
    {
        int widest = 0;
        for (const std::string& entry : m_list.entries)
        {
            widest = std::max(widest, m_surface.TextWidth(ToWide(entry), false, false));
        }
        return {.size = {widest + m_surface.Metric(SM_CXVSCROLL) + m_surface.Pixels(16), m_surface.Pixels(boxHeight)},
                .sameLine = m_list.sameLine,
                .stretches = true};
    }
    // The height that Windows wants is the one with the list dropped down.
    void Place(const RECT& place) override
    {
        const LONG dropped = rowsDropped * m_surface.LineHeight();
        if (m_window.Place(place.left, place.top, place.right, place.bottom + dropped))
        {
            for (const std::string& entry : m_list.entries)
            {
                const std::wstring text = ToWide(entry);
                Send(m_window.Get(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
            }
        }
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
        , m_window(surface, {.windowClass = L"BUTTON",
                             .style = (button.isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON) | WS_TABSTOP |
                                      (startsGroup ? DWORD{WS_GROUP} : 0),
                             .id = id})
    {
        m_window.Update(button);
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
    void Place(const RECT& place) override { m_window.Place(place); }
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
        const LONG_PTR style = m_isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
        if ((GetWindowLongPtrW(m_window.Get(), GWL_STYLE) & BS_TYPEMASK) != style)
        {
            Send(m_window.Get(), BM_SETSTYLE, static_cast<WPARAM>(style), TRUE);
        }
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
        , m_window(surface, {.windowClass = PROGRESS_CLASSW, .style = 0})
    {
        m_window.UpdateState(bar);
    }
    [[nodiscard]] HWND Window() const noexcept override { return m_window.Get(); }
    [[nodiscard]] LayoutItem Needs() const override
    {
        return {.size = {m_surface.Pixels(100), m_surface.Pixels(barHeight)},
                .sameLine = m_bar.sameLine,
                .stretches = true};
    }
    void Place(const RECT& place) override { m_window.Place(place); }
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
