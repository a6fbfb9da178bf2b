// The stand-in's window: what to answer, and what was asked and answered.
#pragma once

#include "simulator/siss/program/simulation.h"
#include "ui/form.h"

#include <string>
#include <vector>

namespace vellumo::siss
{

class SimulationForm final : public ui::Form
{
public:
    SimulationForm(Network& network, Choice choice);

    void Load() override;
    void Clicked(ui::Control& control) override;
    void Changed(ui::Control& control) override;

private:
    void LayOut();
    void Show(const std::string& request, const std::string& reply);
    // The texts of the call that is selected.
    void ShowTexts();

    Network& m_network;
    Choice m_choice;
    std::vector<std::string> m_citizens; // fiscal codes, in the order of the list
    std::vector<Exchange> m_shown;

    ui::Label m_simulation;
    ui::Label m_meaning;
    ui::Label m_whom;
    ui::ComboBox m_citizen;
    ui::CheckBox m_session;
    ui::CheckBox m_card;
    ui::Label m_how;
    ui::ComboBox m_manner;
    ui::Label m_slow;
    ui::ComboBox m_delay;
    ui::Grid m_calls;
    ui::Grid m_texts;
    ui::Button m_clear;
    ui::Button m_close;
};

} // namespace vellumo::siss
