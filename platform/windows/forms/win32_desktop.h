// The operator's desktop on Windows: forms as windows, prompts as message boxes, files by the system's own dialog.
// Everything runs on the calling thread, which is the host's user-interface thread, and belongs to the host's active
// window. One a provider.
#pragma once

#include "platform/windows/forms/common_controls.h"
#include "ui/desktop.h"

#include <optional>
#include <vector>

namespace vellumo::windows
{

class FormWindow;

class Win32Desktop final : public ui::Desktop
{
public:
    Win32Desktop() = default;
    ~Win32Desktop() override = default;

    void ShowModal(ui::Form& form) override;
    [[nodiscard]] std::optional<std::string> AskFile(const std::string& title, const std::string& filter) override;

private:
    ui::Answer ShowBox(const ui::Prompt& prompt) override;
    void DrawOpenForms();

    [[nodiscard]] const CommonControls& Controls();

    std::optional<CommonControls> m_controls; // when first needed: most of what making a provider took
    std::vector<FormWindow*> m_open;          // the innermost last; each lives on the stack of its ShowModal
};

} // namespace vellumo::windows
