#include "simulator/screen/differs.h"

#include "host/text.h"

namespace vellumo::screen
{

std::string Quoted(const std::string& text)
{
    constexpr std::size_t longest = 1500;
    const auto shown = host::Replaced(host::Replaced(text.substr(0, longest), "\r", "\\r"), "\n", "\\n");
    return '"' + shown + (text.size() > longest ? "…\"" : "\"");
}

void Expect(const std::string& what, const std::string& expected, const std::string& seen)
{
    if (expected != seen)
    {
        throw Differs(what + "\n  expected: " + Quoted(expected) + "\n  seen:     " + Quoted(seen));
    }
}

} // namespace vellumo::screen
