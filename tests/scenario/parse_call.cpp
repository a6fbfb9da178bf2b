// The lines of a call: its argument, its windows, its result.
#include "tests/scenario/parser.h"

#include <array>
#include <charconv>

namespace vellumo::scenario
{
namespace
{

CallArgument ReadArgument(Line& line)
{
    CallArgument argument;
    if (line.Take("missing"))
    {
        return argument;
    }
    if (line.Take("empty"))
    {
        argument.passing = norda::Passing::Empty;
        return argument;
    }
    if (line.Take("null"))
    {
        argument.passing = norda::Passing::Null;
        return argument;
    }
    if (line.Take("reference"))
    {
        argument = ReadArgument(line);
        argument.passing = norda::Passing::ByReference;
        return argument;
    }
    argument.passing = norda::Passing::ByValue;
    if (line.Take("patient"))
    {
        argument.patient = line.Word("the fiscal code");
    }
    else if (line.NextIsQuoted())
    {
        argument.value = line.Word("the text");
    }
    else
    {
        argument.value = line.Number("the argument");
    }
    return argument;
}

bool ReadBoolean(Line& line)
{
    const bool value = line.Take("True");
    if (!value && !line.Take("False"))
    {
        line.Fail("expected True or False");
    }
    return value;
}

constexpr std::array operations = {"IdentificaPaziente", "IsActive", "VerificaPaziente", "IsPersonaleStudio", "Studio"};

} // namespace

// `create provider` makes a new one now; without such a line the first call does. `create provider faults "text"`.
void Parser::ReadCreate(Line& line)
{
    if (!line.Take("provider"))
    {
        line.Fail("expected \"create provider\"");
    }
    const auto fault = line.Take("faults") ? std::optional(line.Word("part of the error's text")) : std::nullopt;
    AddStep(line, [=, place = line.Where()](Run& run) { run.CreateProvider(place, fault); });
}

void Parser::ReadCall(Line& line)
{
    m_call = std::make_shared<Call>();
    m_call->place = line.Where();
    m_call->operation = line.Word("the operation");
    if (std::find(operations.begin(), operations.end(), m_call->operation) == operations.end())
    {
        line.Fail("the host cannot call " + m_call->operation);
    }
    if (line.Take("with"))
    {
        m_call->argument = ReadArgument(line);
    }
    AddStep(line, [call = m_call](Run& run) { run.Perform(*call); });
}

void Parser::ReadBox(Line& line)
{
    auto& windows = Belongs(line, m_call.get(), "call").windows;
    ExpectedWindow box{line.Where(), WindowKind::Box, line.Word("the title"), {}};
    box.items = ReadBoxHeader(line);
    windows.push_back(std::move(box));
    m_window = &windows.back();
}

void Parser::ReadWindow(Line& line)
{
    auto& windows = Belongs(line, m_call.get(), "call").windows;
    windows.push_back({line.Where(), WindowKind::Form, line.Word("the title"), {}});
    m_window = &windows.back();
}

void Parser::ReadReturns(Line& line)
{
    Belongs(line, m_call.get(), "call").returns = line.Rest();
    m_window = nullptr;
}

void Parser::ReadGestito(Line& line)
{
    Belongs(line, m_call.get(), "call").gestito = ReadBoolean(line);
    m_window = nullptr;
}

void Parser::ReadFaults(Line& line)
{
    Belongs(line, m_call.get(), "call").fault = line.AtEnd() ? "" : line.Word("part of the error's text");
    m_window = nullptr;
}

} // namespace vellumo::scenario
