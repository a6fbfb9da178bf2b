#include "simulator/norda/sql_dialect.h"

#include "host/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <type_traits>
#include <variant>

namespace vellumo::norda
{

namespace
{

std::string Digits(int number, std::size_t width)
{
    const auto text = std::to_string(number);
    return std::string(width - std::min(width, text.size()), '0') + text;
}

std::string DateLiteral(Dialect dialect, const host::Date& date)
{
    const auto day = date.ToCalendar();
    // SQL Server reads the unseparated form the same way in every language; SQLite compares dates as texts, so there
    // they must all look alike.
    const std::string dash = dialect == Dialect::Sqlite ? "-" : "";
    return '\'' + Digits(day.year, 4) + dash + Digits(day.month, 2) + dash + Digits(day.day, 2) + ' ' +
           Digits(day.hour, 2) + ':' + Digits(day.minute, 2) + ':' + Digits(day.second, 2) + '\'';
}

bool IsAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return (c & '\x80') == 0; });
}

std::string TextLiteral(Dialect dialect, const std::string& text)
{
    std::string literal = !IsAscii(text) && dialect == Dialect::SqlServer ? "N'" : "'";
    literal.reserve(text.size() + 3);
    for (const char c : text)
    {
        literal += c;
        if (c == '\'')
        {
            literal += c;
        }
    }
    return literal + '\'';
}

std::string DoubleLiteral(double value)
{
    std::array<char, 40> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return {text.data(), end};
}

bool IsWord(char c)
{
    return host::IsLetter(c) || host::IsDigit(c) || c == '_' || c == '@' || c == '#';
}

// Where the quoted part that begins at `at` ends.
std::size_t EndOfQuoted(std::string_view sql, std::size_t at)
{
    const auto end = sql.find(sql[at] == '[' ? ']' : sql[at], at + 1);
    return std::min(end, sql.size() - 1) + 1;
}

// One pass over a statement, word by word; quoted parts are taken over untouched.
class SqliteWriter
{
public:
    SqliteWriter(std::string_view sql, Comparison comparison)
        : m_sql(sql)
        , m_comparison(comparison)
    {
    }

    std::string Write()
    {
        m_out.reserve(m_sql.size());
        while (m_at < m_sql.size())
        {
            const char c = m_sql[m_at];
            if (c == '\'' || c == '"' || c == '[')
            {
                Quoted();
            }
            else if (IsWord(c))
            {
                Word();
            }
            else
            {
                m_out += c;
                ++m_at;
            }
        }
        return std::move(m_out);
    }

private:
    void Quoted()
    {
        const auto end = EndOfQuoted(m_sql, m_at);
        m_out += m_sql.substr(m_at, end - m_at);
        m_at = end;
    }

    void Word()
    {
        const auto begin = m_at;
        while (m_at < m_sql.size() && IsWord(m_sql[m_at]))
        {
            ++m_at;
        }
        const auto word = m_sql.substr(begin, m_at - begin);
        if (Next("..") && host::EqualsIgnoringCase(word, "norda"))
        {
            m_out += word;
            m_out += '.';
            m_at += 2;
        }
        else if (Next("(") && host::EqualsIgnoringCase(word, "isnull"))
        {
            m_out += "IFNULL";
        }
        else if (Next("(") && host::EqualsIgnoringCase(word, "len"))
        {
            Length();
        }
        else if (Next("'") && host::EqualsIgnoringCase(word, "n"))
        {
            // the literal follows by itself
        }
        else if (Next(" IDENTITY(1,1)") && host::EqualsIgnoringCase(word, "int"))
        {
            m_out += "INTEGER";
            m_at += std::string_view(" IDENTITY(1,1)").size();
        }
        else if (Next("(") && host::EqualsIgnoringCase(word, "nvarchar"))
        {
            const auto close = std::min(m_sql.find(')', m_at), m_sql.size() - 1) + 1;
            m_out += m_sql.substr(begin, close - begin);
            m_out += " COLLATE NOCASE";
            m_at = close;
        }
        else if (Next(" VIEW ") && host::EqualsIgnoringCase(word, "create"))
        {
            m_out += "CREATE TEMP";
        }
        else if (m_comparison == Comparison::AsSqlServer && m_where && Next(" = '"))
        {
            Compare(word);
        }
        else
        {
            m_where = m_where || host::EqualsIgnoringCase(word, "where");
            m_out += word;
        }
    }

    // A column, by its name or "table.name", with a text.
    void Compare(std::string_view word)
    {
        auto begin = m_out.size();
        while (begin > 0 && (IsWord(m_out[begin - 1]) || m_out[begin - 1] == '.'))
        {
            --begin;
        }
        m_out.insert(begin, "RTRIM(");
        m_out.append(word).append(") COLLATE NOCASE = ");
        m_at += std::string_view(" = ").size();
        Quoted();
        while (Next("'")) // a doubled quotation mark inside the text
        {
            Quoted();
        }
        const auto last = m_out.find_last_not_of(' ', m_out.size() - 2);
        m_out.erase(last + 1, m_out.size() - 2 - last);
    }

    void Length()
    {
        const auto close = std::min(m_sql.find(')', m_at), m_sql.size());
        const auto inner = m_sql.substr(m_at + 1, close - m_at - 1);
        m_out.append("LENGTH(RTRIM(").append(SqliteWriter(inner, m_comparison).Write()).append(")");
        m_at = close;
    }

    [[nodiscard]] bool Next(std::string_view text) const { return m_sql.substr(m_at, text.size()) == text; }

    std::string_view m_sql;
    Comparison m_comparison;
    std::size_t m_at = 0;
    bool m_where = false; // behind that word
    std::string m_out;
};

} // namespace

std::string Literal(Dialect dialect, const host::Value& value)
{
    return std::visit(
        [dialect](const auto& held) -> std::string
        {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::monostate>)
            {
                return "NULL";
            }
            else if constexpr (std::is_same_v<Held, bool>)
            {
                return held ? "1" : "0";
            }
            else if constexpr (std::is_integral_v<Held>)
            {
                return std::to_string(held);
            }
            else if constexpr (std::is_same_v<Held, double>)
            {
                return DoubleLiteral(held);
            }
            else if constexpr (std::is_same_v<Held, host::Date>)
            {
                return DateLiteral(dialect, held);
            }
            else
            {
                return TextLiteral(dialect, held);
            }
        },
        value.Get());
}

std::string PutIn(Dialect dialect, std::string_view sql, const host::Parameters& parameters)
{
    std::string out;
    const char* const last = sql.data() + sql.size();
    std::size_t at = 0;
    for (auto brace = sql.find('{'); brace != std::string_view::npos; brace = sql.find('{', at))
    {
        out += sql.substr(at, brace - at);
        at = brace + 1;
        std::size_t number = 0;
        const auto [end, error] = std::from_chars(sql.data() + at, last, number);
        if (error == std::errc() && end != last && *end == '}' && number < parameters.size())
        {
            out += Literal(dialect, parameters[number]);
            at = static_cast<std::size_t>(end - sql.data()) + 1;
        }
        else
        {
            out += '{';
        }
    }
    return out.append(sql.substr(at));
}

std::string ForSqlite(std::string_view sql, Comparison comparison)
{
    return SqliteWriter(sql, comparison).Write();
}

std::string ForServer(std::string_view sql, std::string_view shared)
{
    std::string out;
    std::size_t at = 0;
    while (at < sql.size())
    {
        auto end = at + 1;
        if (sql[at] == '\'' || sql[at] == '"' || sql[at] == '[')
        {
            end = EndOfQuoted(sql, at);
            const bool isUnicode = sql[at] != '\'' || (at > 0 && (sql[at - 1] == 'N' || sql[at - 1] == '\''));
            out += isUnicode || IsAscii(sql.substr(at, end - at)) ? "" : "N";
        }
        else if (IsWord(sql[at]))
        {
            end = static_cast<std::size_t>(
                std::find_if_not(sql.begin() + static_cast<std::ptrdiff_t>(at), sql.end(), IsWord) - sql.begin());
            if (host::EqualsIgnoringCase(sql.substr(at, end - at), "norda") && sql.substr(end, 2) == "..")
            {
                out += shared;
                at = end;
                continue;
            }
        }
        out += sql.substr(at, end - at);
        at = end;
    }
    return out;
}

} // namespace vellumo::norda
