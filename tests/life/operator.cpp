#include "tests/life/operator.h"

#include "ui/form_wait.h"

#include <algorithm>
#include <array>

namespace vellumo::life
{
namespace
{

constexpr std::array<std::string_view, 3> captions = {"&Stampa ricette errate senza IUP",
                                                      "&Annulla ricette errate e prosegui", "&Annulla operazione"};

class Operator final : public ui::Desktop
{
public:
    explicit Operator(World& world)
        : m_world(world)
    {
    }

    void ShowModal(ui::Form& form) override
    {
        const bool waits = dynamic_cast<ui::FormWait*>(&form) != nullptr;
        m_world.Call(waits ? Point::WaitBefore : Point::Window);
        form.Load();
        form.Activated();
        if (waits)
        {
            m_world.Call(Point::WaitAfter);
        }
        else
        {
            Answer(form);
        }
        if (!form.IsClosed())
        {
            m_world.outside.Violated("the window \"" + form.Title() + "\" does not close");
        }
    }

    std::optional<std::string> AskFile(const std::string&, const std::string&) override { return std::nullopt; }

private:
    ui::Answer ShowBox(const ui::Prompt&) override
    {
        m_world.Call(Point::Box);
        return ui::Answer::Ok;
    }

    void Answer(ui::Form& form)
    {
        const auto button = static_cast<std::size_t>(m_world.button);
        if (Press(form, "&OK"))
        {
            return;
        }
        // From here on the batch counts as given up.
        m_world.givenUp = m_world.button == Button::CancelAll;
        if (m_world.button == Button::Frame || !Press(form, captions.at(button)))
        {
            form.FrameClosed();
        }
    }

    static bool Press(ui::Form& form, std::string_view caption)
    {
        const auto found =
            std::ranges::find_if(form.Controls(), [&](const ui::Control* control) { return control->text == caption; });
        if (found == form.Controls().end())
        {
            return false;
        }
        form.Clicked(**found);
        return true;
    }

    World& m_world;
};

} // namespace

std::unique_ptr<ui::Desktop> MakeDesktop(World& world)
{
    return std::make_unique<Operator>(world);
}

} // namespace vellumo::life
