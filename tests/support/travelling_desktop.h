// Lets each call to SISS travel at once and keeps what the operator was told.
#pragma once

#include "host/fault.h"
#include "ui/desktop.h"
#include "ui/form.h"

#include <optional>
#include <string>

namespace vellumo::tests
{

class TravellingDesktop final : public ui::Desktop
{
public:
    ui::Answer Show(const ui::Prompt& prompt) override
    {
        told += prompt.title + ": " + prompt.text + '\n';
        return ui::Answer::Ok;
    }
    void ShowModal(ui::Form& form) override
    {
        form.Activated();
        if (failsAfterwards)
        {
            throw host::Fault("La finestra non si chiude.");
        }
    }
    std::optional<std::string> AskFile(const std::string&, const std::string&) override { return std::nullopt; }

    std::string told; // a line each, "title: text"
    bool failsAfterwards = false;
};

} // namespace vellumo::tests
