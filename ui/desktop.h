// Everything that the library shows to the operator goes through here. The platform supplies the real one; tests and
// scenarios supply one that answers from a script.
#pragma once

#include "ui/form.h"
#include "ui/prompt.h"

#include <optional>
#include <string>

namespace vellumo::ui
{

class Desktop
{
public:
    virtual ~Desktop() = default;

    // Shows a message box and waits for the answer. Closing it by its frame returns Cancel where there is such a
    // button, Ok where that is the only one.
    Answer Show(const Prompt& prompt) { return ShowBox(Fitted(prompt)); }

    // Shows the form's window; returns once the form says that it is closed and its window is gone. While a window of
    // the library is on screen the host's own window is disabled. Faults when no window can be made.
    virtual void ShowModal(Form& form) = 0;

    // Asks for a file to open. `filter` is "Description (*.ext)|*.ext". Empty when the operator cancelled.
    [[nodiscard]] virtual std::optional<std::string> AskFile(const std::string& title, const std::string& filter) = 0;

private:
    // `prompt` fits into a box; it has no ending.
    virtual Answer ShowBox(const Prompt& prompt) = 0;
};

} // namespace vellumo::ui
