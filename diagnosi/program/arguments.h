// The words behind a command: options, with a value or without, and whatever else.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::diagnosi
{

struct Option
{
    std::string_view name;    // "--giorni"
    std::string_view value;   // what it wants behind it, "N"; "" for nothing
    std::string_view meaning; // Italian
};

class Arguments
{
public:
    // Faults, in Italian, on an option that is not known or lacks its value, and on more operands than `most`.
    Arguments(std::span<const std::string> words, std::span<const Option> known, std::size_t most);

    [[nodiscard]] bool Has(std::string_view option) const;
    // Empty when it was not given; the last one counts.
    [[nodiscard]] std::optional<std::string> Value(std::string_view option) const;
    [[nodiscard]] std::string Value(std::string_view option, std::string_view otherwise) const;
    // As a whole number from 1 on; faults when it is none.
    [[nodiscard]] int Number(std::string_view option, int otherwise) const;

    // What is no option, in order.
    [[nodiscard]] const std::vector<std::string>& Operands() const noexcept { return m_operands; }

private:
    std::map<std::string, std::string, std::less<>> m_options;
    std::vector<std::string> m_operands;
};

} // namespace vellumo::diagnosi
