#include "certificate/house_number.h"

#include "host/fault.h"

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
    auto start = address.find_last_not_of(digits, lastDigit);
    if (start == std::string_view::npos)
    {
        throw host::Fault("L'indirizzo \"" + std::string(address) + "\" comincia con il numero civico.");
    }
    while (start > 0 && (static_cast<unsigned char>(address[start]) & 0xC0U) == 0x80) // inside a character
    {
        --start;
    }
    address.remove_prefix(start);
    const auto first = address.find_first_not_of(' ');
    return std::string(address.substr(first, address.find_last_not_of(' ') - first + 1));
}

} // namespace vellumo::certificate
