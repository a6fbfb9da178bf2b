#include "diagnosi/support/known_values.h"

#include "host/text.h"

#include <algorithm>

namespace vellumo::diagnosi
{
namespace
{

// Any character beyond ASCII counts as a letter.
bool IsOfWord(char each)
{
    return host::IsLetter(each) || host::IsDigit(each) || static_cast<unsigned char>(each) >= 0x80;
}

std::size_t EndOfWord(std::string_view text, std::size_t position)
{
    while (position < text.size() && IsOfWord(text[position]))
    {
        ++position;
    }
    return position;
}

} // namespace

void KnownValues::Add(std::string_view value, std::string_view replacement, std::size_t shortest)
{
    const std::string text = host::WithoutCase(host::Trimmed(value));
    const auto first = std::ranges::find_if(text, IsOfWord);
    if (host::CharacterCount(text) < shortest || first != text.begin())
    {
        return;
    }
    auto& values = m_values[text.substr(0, EndOfWord(text, 0))];
    if (std::ranges::find(values, text, &Value::text) == values.end())
    {
        values.push_back({text, std::string(replacement)});
        // "Colombo Sironi" before "Colombo".
        std::ranges::sort(values, std::ranges::greater(), [](const Value& each) { return each.text.size(); });
    }
}

const KnownValues::Value* KnownValues::FindAt(std::string_view lowerText, std::size_t position) const
{
    const auto end = EndOfWord(lowerText, position);
    const auto values = m_values.find(std::string(lowerText.substr(position, end - position)));
    if (values == m_values.end())
    {
        return nullptr;
    }
    const auto rest = lowerText.substr(position);
    const auto found =
        std::ranges::find_if(values->second,
                             [&](const Value& value)
                             {
                                 const auto size = value.text.size();
                                 return rest.starts_with(value.text) &&
                                        (size == rest.size() || !IsOfWord(value.text.back()) || !IsOfWord(rest[size]));
                             });
    return found == values->second.end() ? nullptr : &*found;
}

std::string KnownValues::Replaced(std::string_view text, std::size_t& count) const
{
    const std::string lowerText = host::WithoutCase(text);
    std::string out;
    for (std::size_t position = 0; position < text.size();)
    {
        if (!IsOfWord(text[position]))
        {
            out += text[position++];
            continue;
        }
        if (const Value* value = FindAt(lowerText, position))
        {
            out += value->replacement;
            position += value->text.size();
            ++count;
            continue;
        }
        const auto end = EndOfWord(text, position);
        out.append(text.substr(position, end - position));
        position = end;
    }
    return out;
}

} // namespace vellumo::diagnosi
