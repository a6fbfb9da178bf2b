#include "host/utils.h"

#include <type_traits>
#include <utility>

namespace vellumo::host
{
namespace
{

Value NullForZero(Value value)
{
    const bool isZero = std::visit(
        []<class Held>(const Held& held)
        {
            if constexpr (std::is_same_v<Held, std::string>)
            {
                return held == "0"; // of a host whose identifiers are texts
            }
            if constexpr (std::is_arithmetic_v<Held> && !std::is_same_v<Held, bool>)
            {
                return held == 0;
            }
            return false;
        },
        value.Get());
    return isZero ? Value() : std::move(value);
}

} // namespace

Value Utils::SingleValue(const std::string& sql, const Parameters& parameters)
{
    return NullForZero(LookUpValue(sql, parameters).WithoutPadding());
}

Value Utils::FindKey(const std::string& table, const std::string& keyColumn, const std::string& condition,
                     const Parameters& parameters)
{
    return NullForZero(LookUpKey(table, keyColumn, condition, parameters).WithoutPadding());
}

} // namespace vellumo::host
