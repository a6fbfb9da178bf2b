#include "platform/windows/forms/form_controls.h"

#include "platform/windows/forms/accessible_control.h"
#include "platform/windows/forms/accessible_grid.h"
#include "platform/windows/forms/window_message.h"

#include <algorithm>

namespace vellumo::windows
{
namespace
{

constexpr int firstId = 1000; // of the input controls

// The option buttons are made one after the other, whatever stands between them in the form, so that the arrow keys
// lead from one to the next.
std::vector<std::size_t> OrderOfMaking(const std::vector<ui::Control*>& controls)
{
    std::vector<std::size_t> order;
    bool optionsMade = false;
    for (std::size_t i = 0; i < controls.size(); ++i)
    {
        if (ui::As<ui::OptionButton>(*controls[i]) == nullptr)
        {
            order.push_back(i);
            continue;
        }
        for (std::size_t option = i; option < controls.size() && !optionsMade; ++option)
        {
            if (ui::As<ui::OptionButton>(*controls[option]) != nullptr)
            {
                order.push_back(option);
            }
        }
        optionsMade = true;
    }
    return order;
}

// The control itself, or the last one before it that has a text.
const ui::Control& NamedBy(const std::vector<ui::Control*>& controls, std::size_t at)
{
    std::size_t named = at;
    while (named > 0 && controls[named]->text.empty())
    {
        --named;
    }
    return *controls[named];
}

ComPtr<Accessible> Owned(Accessible* made)
{
    return ComPtr<Accessible>::Attach(made);
}

} // namespace

FormControls::FormControls(const ui::Form& form, const Surface& surface)
    : m_form(form)
    , m_surface(surface)
    , m_views(form.Controls().size())
{
    bool optionBefore = false;
    for (const std::size_t i : OrderOfMaking(form.Controls()))
    {
        ui::Control& control = *form.Controls()[i];
        const int id = firstId + static_cast<int>(i);
        const bool isOption = ui::As<ui::OptionButton>(control) != nullptr;
        m_views[i] = MakeControlView(control, surface, id, isOption != optionBefore);
        optionBefore = isOption;
    }
}

void FormControls::Make(const std::vector<RECT>& placesOfVisible)
{
    std::vector<RECT> places(m_views.size());
    auto visible = placesOfVisible.begin();
    for (std::size_t i = 0; i < m_views.size(); ++i)
    {
        places[i] = m_views[i]->Control().visible ? *visible++ : RECT{};
    }
    for (const std::size_t i : OrderOfMaking(m_form.Controls()))
    {
        m_views[i]->Place(places[i]);
    }
    AnswerReaders();
}

// Also the captions and pictures that stand beside the controls.
void FormControls::AnswerReaders()
{
    std::vector<HWND> answering;
    for (std::size_t i = 0; i < m_views.size(); ++i)
    {
        ui::Control& control = *m_form.Controls()[i];
        const ui::Control& namedBy = NamedBy(m_form.Controls(), i);
        const HWND window = m_views[i]->Window();
        const auto* const grid = ui::As<ui::Grid>(control);
        const auto make = [=, &control, &namedBy]() -> ComPtr<Accessible>
        {
            return grid != nullptr ? Owned(new AccessibleGrid(window, *grid, namedBy))
                                   : Owned(new AccessibleControl(window, control, namedBy));
        };
        m_accessible.push_back(std::make_unique<AccessibleWindow>(window, make));
        answering.push_back(window);
    }
    for (const HWND child : m_surface.Children())
    {
        if (std::find(answering.begin(), answering.end(), child) == answering.end())
        {
            const ui::Image image = m_surface.ImageOf(reinterpret_cast<HICON>(Send(child, STM_GETICON)));
            const auto make = [=] { return Owned(new AccessibleStatic(child, image)); };
            m_accessible.push_back(std::make_unique<AccessibleWindow>(child, make));
        }
    }
}

std::vector<ControlView*> FormControls::Visible() const
{
    std::vector<ControlView*> visible;
    for (const auto& view : m_views)
    {
        if (view->Control().visible)
        {
            visible.push_back(view.get());
        }
    }
    return visible;
}

ControlView* FormControls::ViewOf(const ui::Control& control) const
{
    const auto found =
        std::find_if(m_views.begin(), m_views.end(), [&](const auto& view) { return &view->Control() == &control; });
    return found == m_views.end() ? nullptr : found->get();
}

ControlView* FormControls::ViewOfId(WORD id) const
{
    const int index = id - firstId;
    return index >= 0 && static_cast<std::size_t>(index) < m_views.size()
               ? m_views[static_cast<std::size_t>(index)].get()
               : nullptr;
}

} // namespace vellumo::windows
