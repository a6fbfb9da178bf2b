// Scenario files as people write and misspell them: a file is read, or refused with the place of the line that is
// wrong; with the line ends of another system it is the same.
#include "fuzz/oracle.h"
#include "player/apart.h"
#include "player/scenario.h"
#include "player/target.h"

#include <optional>
#include <string>
#include <vector>

namespace vellumo::fuzz
{
namespace
{

// All that was read, in one text.
void Describe(const player::Node& node, std::string& out)
{
    out.append(std::to_string(node.place.line)).append(" ").append(node.statement->wording).append(" ");
    out.append(node.behind).append("\n");
    for (const auto& [name, value] : node.values)
    {
        out.append(name).append("=").append(value).append("\n");
        if (name.size() == 1 && name.front() >= 'A' && name.front() <= 'Z')
        {
            static_cast<void>(node.Number(name)); // what was read as a number is one
        }
    }
    for (const auto& line : node.block)
    {
        out.append("|").append(line).append("\n");
    }
    for (const auto* const nodes : {&node.parts, &node.below})
    {
        for (const auto& other : *nodes)
        {
            Describe(other, out);
        }
    }
}

std::string Read(const std::string& text, int lines)
{
    std::string read;
    try
    {
        for (const auto& scenario : player::ReadScenarios("file", text))
        {
            Require(scenario.place.line >= 1 && scenario.place.line <= lines, "where a scenario begins");
            read.append("scenario ").append(scenario.title).append("\n");
            for (const auto& node : scenario.nodes)
            {
                Describe(node, read);
            }
        }
    }
    catch (const player::SyntaxError& error)
    {
        read = error.what();
        Require(read.starts_with("file:"), "where something is wrong");
    }
    return read;
}

} // namespace
} // namespace vellumo::fuzz

// Nothing is played here, so nobody asks for a library to play it with.
namespace vellumo::player
{

Target MakeTarget(screen::Operator&, const std::filesystem::path&)
{
    std::abort();
}

int DoApart(const std::vector<std::string>&, const std::function<void()>&)
{
    std::abort();
}

void EndProcess(int)
{
    std::abort();
}

} // namespace vellumo::player

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace vellumo::fuzz;
    std::string text;
    std::string withReturns;
    int lines = 1;
    for (const char character : View(data, size))
    {
        if (character != '\r')
        {
            lines += character == '\n' ? 1 : 0;
            text += character;
            withReturns.append(character == '\n' ? "\r" : "") += character;
        }
    }
    RequireSame(Read(text, lines), Read(withReturns, lines), "a file with other line ends");
    return 0;
}
