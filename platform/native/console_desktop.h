// The operator's desktop at a terminal: forms and prompts are written as text, answers are read as lines. The end of
// the input closes whatever is open, as a window is closed by its frame. The streams outlive the desktop.
#pragma once

#include "ui/desktop.h"

#include <iosfwd>

namespace vellumo::native
{

class ConsoleDesktop final : public ui::Desktop
{
public:
    ConsoleDesktop(std::istream& in, std::ostream& out)
        : m_in(in)
        , m_out(out)
    {
    }

    void ShowModal(ui::Form& form) override;
    [[nodiscard]] std::optional<std::string> AskFile(const std::string& title, const std::string& filter) override;

private:
    // At the end of the input a question without Cancel is answered No.
    ui::Answer ShowBox(const ui::Prompt& prompt) override;

    std::istream& m_in;
    std::ostream& m_out;
};

} // namespace vellumo::native
