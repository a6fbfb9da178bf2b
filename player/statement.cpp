#include "player/statement.h"

#include "player/written.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <sstream>

namespace vellumo::player
{
namespace
{

using Part = std::string_view; // of a wording

// The wording without its first part, which is given back: a word, or all that stands in brackets.
Part TakePart(Part& wording)
{
    int depth = 0;
    std::size_t end = 0;
    for (; end < wording.size() && (depth != 0 || wording[end] != ' '); ++end)
    {
        depth += wording[end] == '[' ? 1 : wording[end] == ']' ? -1 : 0;
    }
    const auto part = wording.substr(0, end);
    wording.remove_prefix(std::min(end + 1, wording.size()));
    return part;
}

std::vector<std::string> Choices(Part part)
{
    std::vector<std::string> choices;
    std::istringstream in{std::string(part.substr(part.find(':') + 1))};
    for (std::string choice; std::getline(in, choice, '/');)
    {
        choices.push_back(choice);
    }
    return choices;
}

bool IsWholeNumber(const std::string& text)
{
    std::int32_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

// Tries wordings on a line, and knows how far the best of them came and what would have gone on from there.
class Matcher
{
public:
    bool Match(Part wording, Line& line, Node& node)
    {
        while (!wording.empty())
        {
            if (!MatchPart(TakePart(wording), line, node))
            {
                return false;
            }
        }
        return true;
    }
    bool End(const Line& line) { return line.AtEnd() || Missed(line, "the end of the line"); }

    [[noreturn]] void Fail(Line& line) const
    {
        const auto read = line.Peek().size() + line.At() - m_reach; // characters that nothing fitted
        const auto rest = line.Peek().substr(line.Peek().size() - read);
        line.Fail("expected " + Joined(m_expected, " or ") +
                  (rest.empty() ? " at the end of the line" : ", found " + rest));
    }

private:
    bool MatchPart(Part part, Line& line, Node& node)
    {
        const auto name = std::string(part.front() == '\'' ? part.substr(1, part.size() - 2) : part);
        constexpr Part rest = "…";
        switch (part.front())
        {
        case '[':
            MatchOptional(part.substr(1, part.size() - 2), line, node);
            return true;
        case '~':
            line.Take(part.substr(1));
            return true;
        case '<':
            return MatchGroup(part.substr(1, part.size() - 2), line, node);
        default:
            break;
        }
        if (part.find('/') != Part::npos)
        {
            return MatchChoice(part, line, node);
        }
        if (std::any_of(name.begin(), name.end(), [](unsigned char c) { return std::islower(c) != 0; }))
        {
            node.values[name] = name;
            return line.Take(part) || Missed(line, name);
        }
        if (part.ends_with(rest))
        {
            if (line.AtEnd() && node.block.empty())
            {
                return Missed(line, name.substr(0, name.size() - rest.size()));
            }
            node.values[name.substr(0, name.size() - rest.size())] = line.Rest();
            return true;
        }
        return MatchText(name, line, node);
    }

    bool MatchText(const std::string& name, Line& line, Node& node)
    {
        if (line.AtEnd() || (name == "QUOTED" && !line.NextIsQuoted()))
        {
            return Missed(line, name.size() == 1 ? "a number" : name == "QUOTED" ? "a text in quotes" : name);
        }
        Line behind = line;
        auto text = behind.Word();
        if (name.size() == 1 && !IsWholeNumber(text))
        {
            return Missed(line, "a number");
        }
        line = behind;
        node.values[name] = std::move(text);
        return true;
    }

    void MatchOptional(Part wording, Line& line, Node& node)
    {
        Line attempt = line;
        Node with = node;
        if (Match(wording, attempt, with))
        {
            line = attempt;
            node = std::move(with);
        }
    }

    bool MatchChoice(Part part, Line& line, Node& node)
    {
        for (const auto& choice : Choices(part))
        {
            if (line.Take(choice))
            {
                node.values[choice] = choice;
                node.values[std::string(part.substr(0, part.find(':')))] = choice;
                return true;
            }
            Missed(line, choice);
        }
        return false;
    }

    bool MatchGroup(Part name, Line& line, Node& node)
    {
        const auto group =
            std::find_if(Groups().begin(), Groups().end(), [&](const auto* g) { return g->name == name; });
        for (const auto& statement : (*group)->statements)
        {
            Line attempt = line;
            Node part{*group, &statement, node.place, line.Peek(), node.block, {}, {}, {}};
            if (Match(statement.wording, attempt, part))
            {
                line = attempt;
                node.parts.push_back(std::move(part));
                return true;
            }
        }
        return false;
    }

    // Always false.
    bool Missed(const Line& line, const std::string& expected)
    {
        if (line.At() > m_reach)
        {
            m_reach = line.At();
            m_expected.clear();
        }
        if (line.At() == m_reach && std::find(m_expected.begin(), m_expected.end(), expected) == m_expected.end())
        {
            m_expected.push_back(expected);
        }
        return false;
    }

    std::size_t m_reach = 0;
    std::vector<std::string> m_expected;
};

// Without the marks that only the player needs.
std::string ForReaders(Part wording)
{
    std::string text;
    for (std::size_t i = 0; i < wording.size(); ++i)
    {
        const auto word = wording.substr(i, wording.find_first_of(" ]", i) - i);
        const bool begins = i == 0 || wording[i - 1] == ' ' || wording[i - 1] == '[';
        if (begins && word.find('/') != Part::npos && word.find(':') != Part::npos)
        {
            i += word.find(':');
        }
        else if (wording[i] != '~')
        {
            text += wording[i] == '\'' ? '"' : wording[i];
        }
    }
    return text;
}

std::string Table(const Group& group)
{
    std::string rows = "| line | meaning |\n|---|---|\n";
    for (const auto& statement : group.statements)
    {
        const bool joined = statement.meaning.empty();
        if (joined)
        {
            rows.insert(rows.rfind(" | "), ", `" + ForReaders(statement.wording) + '`');
        }
        else
        {
            const auto below = std::string(statement.below);
            rows += "| `" + ForReaders(statement.wording) + "` | " +
                    (below.empty() || below == "window" ? "" : "below `" + below + "`: ") +
                    std::string(statement.meaning) + " |\n";
        }
    }
    return rows;
}

} // namespace

std::string Node::Text(const std::string& name) const
{
    const auto found = values.find(name);
    if (found == values.end() && statement->wording.find(name) == Part::npos)
    {
        throw std::logic_error("no " + name + " in \"" + std::string(statement->wording) + '"');
    }
    return found == values.end() ? "" : found->second;
}

std::size_t Node::Count(const std::string& name) const
{
    const auto number = Number(name);
    if (number < 0)
    {
        throw Differs("a number below 0 counts nothing");
    }
    return static_cast<std::size_t>(number);
}

Node ReadNode(Line line)
{
    const auto keyword = line.Peek().substr(0, line.Peek().find_first_of(" \t"));
    Matcher matcher;
    bool known = false;
    for (const auto* const group : Groups())
    {
        for (const auto& statement : group->statements)
        {
            if (group->role == Role::Part || statement.Keyword() != keyword)
            {
                continue;
            }
            known = true;
            Line attempt = line;
            attempt.Take(keyword);
            Node node{group, &statement, line.Where(), attempt.Peek(), line.Block(), {}, {}, {}};
            if (matcher.Match(statement.wording.substr(std::min(keyword.size() + 1, statement.wording.size())), attempt,
                              node) &&
                matcher.End(attempt))
            {
                return node;
            }
        }
    }
    if (!known)
    {
        line.Fail("unknown keyword " + keyword);
    }
    matcher.Fail(line);
}

const std::vector<const Group*>& Groups()
{
    static const std::vector<const Group*> groups = {
        &scenarioStatements, &practiceStatements, &sissStatements,      &callNumberStatements, &replyStatements,
        &entryStatements,    &callStatements,     &operationStatements, &argumentStatements,   &kindStatements,
        &lookStatements,     &actionStatements,   &checkStatements};
    return groups;
}

std::string WithStatementTables(const std::string& document)
{
    constexpr Part mark = "<!-- statements: ";
    std::istringstream in(document);
    std::string text;
    bool inTable = false;
    for (std::string line; std::getline(in, line);)
    {
        inTable = inTable && line.starts_with('|');
        text += inTable ? "" : line + '\n';
        if (line.starts_with(mark))
        {
            const auto name = line.substr(mark.size(), line.rfind(" -->") - mark.size());
            for (const auto* const group : Groups())
            {
                text += group->name == name ? Table(*group) : "";
            }
            inTable = true;
        }
    }
    return text;
}

} // namespace vellumo::player
