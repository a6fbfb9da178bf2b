#include "simulator/norda/program/command.h"

#include "host/text.h"

#include <algorithm>
#include <utility>

namespace vellumo::norda
{
namespace
{

constexpr std::string_view rest = "…";

bool IsNumber(std::string_view word)
{
    return !word.empty() && std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool Fits(std::string_view wording, std::string_view word)
{
    if (const auto bar = wording.find('|'); bar != std::string_view::npos)
    {
        return Fits(wording.substr(0, bar), word) || Fits(wording.substr(bar + 1), word);
    }
    const bool isName = std::none_of(wording.begin(), wording.end(), [](char c) { return c >= 'a' && c <= 'z'; });
    return wording.starts_with('#') ? IsNumber(word) : isName ? !word.empty() : wording == word;
}

// Takes what stands before the next blank.
std::string_view TakeWord(std::string_view& text)
{
    const auto word = text.substr(0, text.find(' '));
    text = host::Trimmed(text.substr(word.size()));
    return word;
}

} // namespace

std::optional<Given> Fit(const Command& command, const std::string& behind)
{
    Given given;
    std::string_view left = behind;
    for (auto wordings = command.arguments; !wordings.empty();)
    {
        auto wording = TakeWord(wordings);
        const bool isOptional = wording.starts_with('[');
        wording = isOptional ? wording.substr(1, wording.size() - 2) : wording;
        auto after = left;
        const auto word = wording.ends_with(rest) ? std::exchange(after, {}) : TakeWord(after);
        const bool fits = Fits(wording, word);
        if (!fits && !isOptional)
        {
            return std::nullopt;
        }
        given.emplace_back(fits ? word : "");
        left = fits ? after : left;
    }
    return left.empty() ? std::optional(given) : std::nullopt;
}

} // namespace vellumo::norda
