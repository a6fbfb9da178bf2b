#include "certificate/municipality.h"

namespace vellumo::certificate
{

std::string IstatCodeOf(const host::HostServices& services, const host::Value& idComune)
{
    return services.RequireUtils()
        .SingleValue("SELECT CodiceISTAT FROM Norda..Comune WHERE IDComune = {0}", {idComune})
        .ToText();
}

std::string NameOf(const host::HostServices& services, const host::Value& idComune)
{
    return services.RequireUtils()
        .SingleValue("SELECT Comune FROM Norda..Comune WHERE IDComune = {0}", {idComune})
        .ToText();
}

std::string ProvinceOf(const host::HostServices& services, const host::Value& idComune)
{
    return services.RequireUtils()
        .SingleValue("SELECT SiglaProvincia FROM Norda..Provincia INNER JOIN Norda..Comune ON "
                     "Norda..Provincia.IDProvincia = Norda..Comune.IDProvincia WHERE Norda..Comune.IDComune = {0}",
                     {idComune})
        .ToText();
}

} // namespace vellumo::certificate
