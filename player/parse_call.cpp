// The lines of a call: its argument, its windows, its result.
#include "player/parser.h"

namespace vellumo::player
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
    if (line.Take("nothing"))
    {
        argument.passing = norda::Passing::NoObject;
        return argument;
    }
    if (line.Take("object"))
    {
        argument.passing = norda::Passing::OtherObject;
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
    else if (line.Take("certificate"))
    {
        argument.certificate = line.Number("its number");
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

std::int32_t ReadKind(Line& line)
{
    if (line.Take("drugs"))
    {
        return host::kindDrugs;
    }
    return line.Take("tests") ? host::kindTests : line.Number("drugs, tests or a number");
}

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
    const auto* const operation = FindOperation(m_call->operation);
    if (operation == nullptr)
    {
        line.Fail("the host cannot call " + m_call->operation);
    }
    const bool onForm = operation->arguments == Arguments::Form;
    const bool onPrescription = operation->arguments == Arguments::Prescription;
    if (line.Take("with"))
    {
        m_call->argument = ReadArgument(line);
        m_call->second = onPrescription ? ReadArgument(line) : CallArgument();
        m_call->kind = onForm || onPrescription ? ReadKind(line) : 0;
    }
    else if (onForm || onPrescription)
    {
        line.Fail("expected \"with\" and the prescription");
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

void Parser::ReadDialog(Line& line)
{
    auto& windows = Belongs(line, m_call.get(), "call").windows;
    windows.push_back({line.Where(), WindowKind::FileDialog, line.Word("the title"), {}});
    m_window = &windows.back();
}

// `open "elenco.xml"`: a file below the practice's folder; `open beside "elenco.xml"`: one beside the scenario;
// `open nothing` cancels.
void Parser::ReadOpen(Line& line)
{
    auto& dialog = Belongs(line, m_window, "dialog");
    const bool cancels = line.Take("nothing");
    const bool beside = line.Take("beside");
    const auto name = cancels ? std::string() : line.Word("the file");
    const auto file =
        beside ? std::filesystem::absolute(m_folder) / std::filesystem::u8path(name) : std::filesystem::u8path(name);
    dialog.items.push_back({line.Where(), cancels ? "non sceglie nessun file" : "apre " + name,
                            [=, folder = m_call->folder](Window& window) -> std::optional<std::string>
                            {
                                window.ChooseFile(cancels || beside ? file : *folder / file);
                                return std::nullopt;
                            }});
}

// A window with a progress bar; each line below must have been true at some moment while it was at work.
void Parser::ReadWatch(Line& line)
{
    auto& windows = Belongs(line, m_call.get(), "call").watched;
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

} // namespace vellumo::player
