#include "ui/whom.h"

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
        add(", ", born + whom.dataNascita.ToDayText());
    }
    add(", ", whom.codiceFiscale.empty() ? "" : "codice fiscale " + whom.codiceFiscale);
    return text.empty() ? "non indicato" : text;
}

} // namespace vellumo::ui
