#include "xml/declaration.h"

#include "xml/characters.h"

#include <algorithm>

namespace vellumo::xml
{
namespace
{

bool IsDigit(char each)
{
    return each >= '0' && each <= '9';
}

bool IsLetter(char each)
{
    return (each >= 'A' && each <= 'Z') || (each >= 'a' && each <= 'z');
}

bool IsVersion(std::string_view value)
{
    return value.size() > 2 && value.starts_with("1.") && std::ranges::all_of(value.substr(2), IsDigit);
}

bool IsEncodingName(std::string_view value)
{
    return !value.empty() && IsLetter(value.front()) &&
           std::ranges::all_of(
               value,
               [](char each) { return IsLetter(each) || IsDigit(each) || each == '.' || each == '_' || each == '-'; });
}

bool IsYesOrNo(std::string_view value)
{
    return value == "yes" || value == "no";
}

class Declaration
{
public:
    explicit Declaration(std::string_view text)
        : m_text(text)
    {
    }

    [[nodiscard]] std::optional<std::string_view> TextBehind()
    {
        if (IsAhead())
        {
            TakeLiteral(opening);
            m_blankBefore = SkipBlanks();
            const bool hasVersion = TakePart("version", IsVersion);
            TakePart("encoding", IsEncodingName);
            TakePart("standalone", IsYesOrNo);
            if (!hasVersion || !m_good || !TakeLiteral("?>"))
            {
                return std::nullopt;
            }
        }
        SkipBlanks();
        return IsAhead() ? std::nullopt : std::optional(m_text);
    }

private:
    // One `name = "value"` with white space before it. False when it is not there, or not as it should be.
    bool TakePart(std::string_view name, bool (*isValue)(std::string_view))
    {
        if (!m_good || !m_blankBefore || !TakeLiteral(name))
        {
            return false;
        }
        SkipBlanks();
        m_good = TakeLiteral("=");
        SkipBlanks();
        const char quote = m_text.empty() ? '\0' : m_text.front();
        const auto end = quote == '"' || quote == '\'' ? m_text.find(quote, 1) : std::string_view::npos;
        m_good = m_good && end != std::string_view::npos && isValue(m_text.substr(1, end - 1));
        if (m_good)
        {
            m_text.remove_prefix(end + 1);
            m_blankBefore = SkipBlanks();
        }
        return m_good;
    }

    [[nodiscard]] bool IsAhead() const
    {
        return m_text.starts_with(opening) && m_text.size() > opening.size() &&
               blanks.find(m_text[opening.size()]) != std::string_view::npos;
    }

    bool TakeLiteral(std::string_view literal)
    {
        const bool found = m_text.starts_with(literal);
        m_text.remove_prefix(found ? literal.size() : 0);
        return found;
    }

    bool SkipBlanks()
    {
        const auto count = std::min(m_text.find_first_not_of(blanks), m_text.size());
        m_text.remove_prefix(count);
        return count != 0;
    }

    static constexpr std::string_view opening = "<?xml";

    std::string_view m_text;
    bool m_blankBefore = false;
    bool m_good = true;
};

} // namespace

std::optional<std::string_view> TextBehindDeclaration(std::string_view text)
{
    return Declaration(text).TextBehind();
}

} // namespace vellumo::xml
