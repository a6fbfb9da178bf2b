#include "ui/whom.h"

#include <array>
#include <cstdio>

namespace vellumo::ui
{

std::string Describe(const Whom& whom)
{
    std::string text = whom.cognome;
    const auto add = [&](const char* between, const std::string& part)
    {
        if (!part.empty())
        {
            text += (text.empty() ? "" : between) + part;
        }
    };
    add(" ", whom.nome);
    if (!whom.dataNascita.IsZero())
    {
        const char* const born = whom.sesso == "M" ? "nato il " : whom.sesso == "F" ? "nata il " : "nato/a il ";
        add(", ", born + ShownDate(whom.dataNascita));
    }
    add(", ", whom.codiceFiscale.empty() ? "" : "codice fiscale " + whom.codiceFiscale);
    return text.empty() ? "non indicato" : text;
}

std::string ShownDate(const host::Date& date)
{
    if (date.IsZero())
    {
        return "";
    }
    const host::Date::Calendar calendar = date.ToCalendar();
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%02d/%02d/%04d", calendar.day, calendar.month, calendar.year);
    return text.data();
}

} // namespace vellumo::ui
