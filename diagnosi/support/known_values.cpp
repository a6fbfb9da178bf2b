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
    m_lengths[text.substr(0, EndOfWord(text, 0))].insert(text.size());
    m_replacements.try_emplace(text, replacement);
}

KnownValues::Values::const_iterator KnownValues::FindAt(const std::string& lowerText, std::size_t position) const
{
    const auto lengths = m_lengths.find(lowerText.substr(position, EndOfWord(lowerText, position) - position));
    if (lengths == m_lengths.end())
    {
        return m_replacements.end();
    }
    for (const auto length : lengths->second)
    {
        const auto end = position + length;
        const bool endsWord = end == lowerText.size() ||
                              (end < lowerText.size() && !(IsOfWord(lowerText[end - 1]) && IsOfWord(lowerText[end])));
        const auto found = endsWord ? m_replacements.find(lowerText.substr(position, length)) : m_replacements.end();
        if (found != m_replacements.end())
        {
            return found;
        }
    }
    return m_replacements.end();
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
        if (const auto value = FindAt(lowerText, position); value != m_replacements.end())
        {
            out += value->second;
            position += value->first.size();
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
