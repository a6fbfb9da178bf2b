#include "simulator/siss/contacts.h"

#include "simulator/siss/replies.h"

namespace vellumo::siss
{

ServiceAnswer Contacts::Insert(const Element& request)
{
    const auto code = request.TextAt("datiContatto/contatto/codiceFiscale").value_or("");
    if (!m_known.insert(code).second)
    {
        return Refusal{
            "EA0004",
            "Errore nei dati in ingresso.",
            {{"EA0004", "Inserimento non possibile.", "codiceFiscale", code, "ED0511", "Il contatto è già presente."}},
            {}};
    }
    return Result("S");
}

ServiceAnswer Contacts::Modify(const Element& request) const
{
    const auto code = request.TextAt("modificaDatiContatto/contatto/codiceFiscale").value_or("");
    return Result(m_known.contains(code) ? "S" : "N");
}

std::string Contacts::Result(const std::string& text)
{
    return Leaf("esitoServizio", text);
}

} // namespace vellumo::siss
