// What a box shows of a text that does not fit.
#include "ui/prompt.h"

#include "host/text.h"

#include <doctest.h>

#include <algorithm>

using vellumo::host::CharacterCount;

namespace
{

std::string Lines(int count)
{
    std::string text = "1";
    for (int line = 2; line <= count; ++line)
    {
        text += "\r\n" + std::to_string(line);
    }
    return text;
}

std::string Shown(const std::string& text, const std::string& ending = "")
{
    vellumo::ui::Prompt prompt;
    prompt.text = text;
    prompt.ending = ending;
    const auto fitted = vellumo::ui::Fitted(prompt);
    CHECK(fitted.ending.empty());
    return fitted.text;
}

} // namespace

TEST_SUITE("ui")
{
    TEST_CASE("a text that fits is shown as it is")
    {
        for (const auto& text : {std::string(), Lines(25), std::string(2000, 'x')})
        {
            CHECK(Shown(text) == text);
        }
        CHECK(Shown("Errore.", "\r\nCodice E9") == "Errore.\r\nCodice E9");
    }

    TEST_CASE("a longer one is cut, by lines and by characters")
    {
        CHECK(Shown(Lines(26)) == Lines(25) + "…");
        std::string accents;
        for (int i = 0; i < 2001; ++i)
        {
            accents += "è";
        }
        CHECK(Shown(accents) == accents.substr(0, 2 * 1999) + "…");
    }

    TEST_CASE("the ending is seen behind any text, the beginning of a long one as well")
    {
        CHECK(Shown(Lines(40), "\r\nCodice E9") == Lines(24) + "…\r\nCodice E9");
        const auto both = Shown(std::string(5000, 'x'), "\r\nCodice E9 " + Lines(5000));
        CHECK(both.starts_with("xxx"));
        CHECK(both.find("…\r\nCodice E9 1\r\n2") != std::string::npos);
        CHECK(both.ends_with("…"));
        CHECK(CharacterCount(both) == 2000);
        CHECK(std::ranges::count(both, '\n') <= 24);
    }
}
