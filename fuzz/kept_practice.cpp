#include "fuzz/kept_practice.h"

#include "host/fault.h"
#include "ui/form.h"

namespace vellumo::fuzz
{
namespace
{

// Lets the window do its work, then presses its confirmation where it has one that can be pressed.
void Confirm(ui::Form& form)
{
    form.Load();
    form.Activated();
    for (ui::Control* const control : form.Controls())
    {
        const auto* const button = ui::As<ui::Button>(*control);
        if (button != nullptr && button->enabled && button->text.find("onferma") != std::string::npos)
        {
            form.Clicked(*control);
            return;
        }
    }
}

} // namespace

bool KeptPractice::Lines::Append(std::string_view line) noexcept
{
    host::PassOver([&] { lines.emplace_back(line); });
    return true;
}

KeptPractice::KeptPractice()
{
    parts.desktop.showWindow = Confirm;
    Renew();
}

void KeptPractice::Renew()
{
    parts.connection->log.clear();
    // A doctor is logged on, and the host's catalogue has one exemption, with which every one of SISS is paired.
    parts.connection->rowsOf = [](const std::string& sql)
    {
        return sql.find("FROM Specialista") != std::string::npos ? tests::Rows{{{"IDSpecialista", 1}}}
               : sql.find("senzion") != std::string::npos
                   ? tests::Rows{{{"0", 11}, {"1", "Invalidi"}, {"2", "C03"}, {"3", 1}}}
                   : tests::Rows();
    };
    parts.utils->valueOf = [](const std::string& sql, const host::Parameters&)
    { return sql.find("SISS_Esenzione") == std::string::npos ? host::Value() : host::Value(11); };
    parts.utils->rowsOf = [](const std::string& sql)
    {
        return sql.find("VwPartecipazioneSpesa") == std::string::npos ? tests::Rows()
                                                                      : tests::Rows{{{"Esenzione", "C03"}}};
    };
    parts.utils->rowWritten = nullptr;
    parts.utils->tableDate = host::Value();
    parts.utils->written.clear();
    parts.objects.patient = tests::StoredRow();
    parts.bridge.requests.clear();
    parts.desktop.prompts.clear();
    parts.desktop.answers.clear();
    parts.desktop.file.reset();
    traces.lines.clear();
}

bool KeptPractice::Committed(std::size_t begun) const
{
    std::string expected;
    for (std::size_t time = 0; time < begun; ++time)
    {
        expected += "BC";
    }
    return parts.connection->log == expected;
}

} // namespace vellumo::fuzz
