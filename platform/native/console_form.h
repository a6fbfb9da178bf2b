// One form at the terminal. It writes the form's controls, then reads a line that begins with the letter of a control:
// alone it presses a button or ticks a box; with a number it goes to a row or an entry, with a text it types. An empty
// line presses the default button. A form without anything to operate shows its texts as they change.
#pragma once

#include "ui/form.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace vellumo::native
{

class ConsoleForm final : private ui::FormView
{
public:
    ConsoleForm(ui::Form& form, std::istream& in, std::ostream& out);
    ~ConsoleForm() override;
    ConsoleForm(const ConsoleForm&) = delete;
    ConsoleForm& operator=(const ConsoleForm&) = delete;

    // Returns when the form is closed; at the end of the input it is closed by its frame.
    void ShowModal();

private:
    struct Operable
    {
        ui::Control* control;
        char key;
    };

    void Refresh() override;
    void RefreshSoon() override;
    void ProcessMessages() override {}

    void FindOperable();
    void Draw() const;
    void DrawControl(const ui::Label& label) const;
    void DrawControl(const ui::TextBox& box) const;
    void DrawControl(const ui::CheckBox& box) const;
    void DrawControl(const ui::OptionButton& option) const;
    void DrawControl(const ui::ComboBox& list) const;
    void DrawControl(const ui::Button& button) const;
    void DrawControl(const ui::Grid& grid) const;
    void DrawControl(const ui::ProgressBar&) const {} // stands only where nothing is to operate
    void DrawLine(const ui::Control& control, const std::string& state) const;
    void DrawGrid(const ui::Grid& grid) const;
    void DrawProgress();
    void Obey(const std::string& line);
    void Operate(ui::Control& control, const std::string& argument);
    // False when the argument says nothing that the control can do.
    bool Obeys(ui::TextBox& box, const std::string& argument);
    bool Obeys(ui::CheckBox& box, const std::string& argument);
    bool Obeys(ui::OptionButton& option, const std::string& argument);
    bool Obeys(ui::Button& button, const std::string& argument);
    bool Obeys(ui::ComboBox& list, const std::string& argument);
    bool Obeys(ui::Grid& grid, const std::string& argument);
    static bool Obeys(ui::Label&, const std::string&) { return true; }       // has no letter
    static bool Obeys(ui::ProgressBar&, const std::string&) { return true; } // neither
    void Complain() const;
    [[nodiscard]] std::string KeyOf(const ui::Control& control) const;
    [[nodiscard]] bool ToOperate() const noexcept { return !m_operable.empty(); }

    ui::Form& m_form;
    std::istream& m_in;
    std::ostream& m_out;
    std::vector<Operable> m_operable;
    std::string m_progressShown;
    std::int64_t m_shownAt = 0; // milliseconds of the system's clock, as the next
    std::int64_t m_lookedAt = 0;
    int m_reportsPassed = 0; // after the last look
    int m_reportsToPass = 0; // until the next
};

} // namespace vellumo::native
