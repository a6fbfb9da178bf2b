#include "certificate/house_number.h"

#include "host/fault.h"
#include "host/text.h"

namespace vellumo::certificate
{

std::string ExtractHouseNumber(std::string_view address)
{
    constexpr std::string_view digits = "0123456789";
    const auto lastDigit = address.find_last_of(digits);
    if (lastDigit == std::string_view::npos)
    {
        return "1";
    }
    const auto start = address.find_last_not_of(digits, lastDigit);
    if (start == std::string_view::npos)
    {
        throw host::Fault("L'indirizzo \"" + std::string(address) + "\" comincia con il numero civico.");
    }
    const std::string number = host::LastCharacters(address.substr(0, start + 1), 1).append(address.substr(start + 1));
    return std::string(host::Trimmed(number, " "));
}

} // namespace vellumo::certificate
