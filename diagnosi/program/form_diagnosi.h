// The program's window: the checks with what was found and what to do, and a button for each of the other tasks, which
// run as their commands do. It changes nothing without a question.
#pragma once

#include "diagnosi/checks/checks.h"
#include "diagnosi/program/exit_code.h"
#include "ui/desktop.h"
#include "ui/form.h"

#include <functional>
#include <string>
#include <vector>

namespace vellumo::diagnosi
{

class FormDiagnosi final : public ui::Form
{
public:
    // Shows a file with the program that the system has for it.
    using OpenFile = std::function<void(const std::string& path)>;

    // All three outlive the form.
    FormDiagnosi(Machine& machine, ui::Desktop& desktop, OpenFile open);

    void Activated() override; // runs the checks when the window is on screen for the first time
    void Clicked(ui::Control& control) override;
    void Changed(ui::Control& control) override;
    void FrameClosed() override;

private:
    struct Answer
    {
        ExitCode code;
        std::string text;
    };

    void LayOut();
    void CheckAll();
    void Show(const std::vector<Checked>& checked);
    void ShowRemedy();
    void Do(const ui::Control& control);
    void ShowExchanges();
    void PackForSupport();
    void CleanUp();
    [[nodiscard]] Answer Command(const std::vector<std::string>& words);
    void Tell(const Answer& answer);

    Machine& m_machine;
    ui::Desktop& m_desktop;
    OpenFile m_open;
    bool m_isChecked = false;
    bool m_isBusy = false; // messages are processed while checks run
    std::vector<std::string> m_remedies;

    ui::Label m_summary;
    ui::Label m_version;
    ui::Grid m_checks;
    ui::TextBox m_remedy;
    ui::TextBox m_connection;
    ui::Button m_again;
    ui::Label m_ifAgain;
    ui::Button m_exchanges;
    ui::Label m_ifExchanges;
    ui::Button m_package;
    ui::Label m_ifPackage;
    ui::TextBox m_days;
    ui::Button m_cleaning;
    ui::Label m_ifCleaning;
    ui::Button m_close;
    ui::Label m_ifClose;
};

} // namespace vellumo::diagnosi
