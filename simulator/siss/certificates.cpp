#include "simulator/siss/certificates.h"

#include "host/clock.h"
#include "simulator/siss/replies.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace vellumo::siss
{
namespace
{

// Below param/invioCertificato.
constexpr std::array<std::string_view, 8> mandatory = {
    "medico/codiceFiscale",   "medico/codiceASL",     "lavoratore/codiceFiscale",   "certificato/dataRilascio",
    "certificato/dataInizio", "certificato/dataFine", "certificato/codiceDiagnosi", "certificato/tipoCertificato",
};

std::string Digits(int number, std::size_t width)
{
    const auto text = std::to_string(number);
    return std::string(width - std::min(width, text.size()), '0') + text;
}

// 2024-03-04T09:30:00
std::string Now()
{
    const auto now = host::SystemClock().Now().ToCalendar();
    return Digits(now.year, 4) + '-' + Digits(now.month, 2) + '-' + Digits(now.day, 2) + 'T' + Digits(now.hour, 2) +
           ':' + Digits(now.minute, 2) + ':' + Digits(now.second, 2);
}

Refusal RefuseField(std::string_view field, const std::string& value, const std::string& why)
{
    const std::string path(field);
    return {"GCM00010",
            "Il certificato non è valido.",
            {{"GCM00011", "Controllo formale non superato.", path, value, "GCM00012", why}},
            {}};
}

} // namespace

ServiceAnswer Certificates::Receive(const Element& request)
{
    const auto get = [&](std::string_view path)
    { return request.TextAt("param/invioCertificato/" + std::string(path)).value_or(""); };
    for (const auto path : mandatory)
    {
        if (get(path).empty())
        {
            return RefuseField(path, "", "Il campo è obbligatorio.");
        }
    }
    if (const auto end = get("certificato/dataFine"); end < get("certificato/dataInizio"))
    {
        return RefuseField("certificato/dataFine", end, "La malattia finisce prima di cominciare.");
    }
    return Receipt((m_simulation ? "SIMUL" : "") + std::to_string(++m_lastProtocol), Now());
}

std::string Certificates::Receipt(const std::string& protocol, const std::string& date)
{
    return Wrapped("rispostaInvioCertificato",
                   Wrapped("datiINPS", Leaf("protocolloINPS", protocol) + Leaf("dataRicezione", date)));
}

} // namespace vellumo::siss
