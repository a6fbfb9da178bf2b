// The people in the messages of one package, and what they are called there. A pseudonym is drawn by lot for each
// package, so that nothing leads back from it and two packages have nothing in common.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::diagnosi
{

using Random = std::function<std::uint32_t()>;

// What one element says of somebody; "" for what it does not say.
struct PersonData
{
    std::string fiscalCode;
    std::string card;
    std::string surname;
    std::string givenName;

    [[nodiscard]] bool IsEmpty() const noexcept { return (fiscalCode + card + surname + givenName).empty(); }
};

class Persons
{
public:
    explicit Persons(Random random);

    // First all that the messages say, so that somebody who is named once without his code is known for who he is.
    void Learn(const PersonData& data);
    // Six letters, the same for the same person: he is known by fiscal code, else by card, else by his whole name
    // where only one person has it. `data` must not be empty.
    [[nodiscard]] std::string TagOf(const PersonData& data);
    // Of a text that is somebody's fiscal code or card; empty for any other.
    [[nodiscard]] std::optional<std::string> TagOf(std::string_view text) const;

    [[nodiscard]] std::size_t Count() const noexcept { return m_tags.size(); }

    // No code of anybody: there is no day 00.
    [[nodiscard]] static std::string FiscalCodeOf(const std::string& tag) { return tag + "00A00Z000X"; }
    [[nodiscard]] static std::string CardOf(const std::string& tag) { return tag + "0000"; }

private:
    [[nodiscard]] std::string Draw();

    Random m_random;
    std::set<std::string> m_tags;
    std::map<std::string, std::string> m_byCode;           // fiscal codes and cards
    std::map<std::string, std::set<std::string>> m_byName; // of those with a code
    std::map<std::string, std::string> m_byNameAlone;
};

} // namespace vellumo::diagnosi
