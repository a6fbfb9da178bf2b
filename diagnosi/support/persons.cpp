#include "diagnosi/support/persons.h"

#include "host/text.h"

#include <utility>

namespace vellumo::diagnosi
{
namespace
{

// How one value is written differs from message to message by case and blanks at most.
std::string KeyOf(std::string_view text)
{
    return host::WithoutCase(host::Trimmed(text));
}

std::string NameKey(const PersonData& data)
{
    return KeyOf(data.surname) + '\t' + KeyOf(data.givenName);
}

} // namespace

Persons::Persons(Random random)
    : m_random(std::move(random))
{
}

std::string Persons::Draw()
{
    constexpr std::string_view letters = "BCDFGHJKLMNPQRSTVWXZ"; // without vowels no word comes out
    constexpr std::size_t length = 6;
    for (;;)
    {
        std::string tag;
        while (tag.size() < length)
        {
            tag += letters[m_random() % letters.size()];
        }
        if (m_tags.insert(tag).second)
        {
            return tag;
        }
    }
}

void Persons::Learn(const PersonData& data)
{
    if (!data.fiscalCode.empty() || !data.card.empty())
    {
        static_cast<void>(TagOf(data));
    }
}

std::string Persons::TagOf(const PersonData& data)
{
    std::string tag;
    for (const auto* code : {&data.fiscalCode, &data.card})
    {
        const auto known = m_byCode.find(KeyOf(*code));
        if (tag.empty() && !code->empty() && known != m_byCode.end())
        {
            tag = known->second;
        }
    }
    const std::string name = NameKey(data);
    if (data.fiscalCode.empty() && data.card.empty())
    {
        const auto& namesakes = m_byName[name];
        const auto nobody = m_byNameAlone.find(name);
        if (namesakes.size() == 1)
        {
            return *namesakes.begin();
        }
        return nobody != m_byNameAlone.end() ? nobody->second : m_byNameAlone.emplace(name, Draw()).first->second;
    }
    if (tag.empty())
    {
        tag = Draw();
    }
    for (const auto* code : {&data.fiscalCode, &data.card})
    {
        if (!code->empty())
        {
            m_byCode.try_emplace(KeyOf(*code), tag);
        }
    }
    m_byName[name].insert(tag);
    return tag;
}

std::optional<std::string> Persons::TagOf(std::string_view text) const
{
    const auto known = m_byCode.find(KeyOf(text));
    return known == m_byCode.end() ? std::nullopt : std::optional(known->second);
}

} // namespace vellumo::diagnosi
