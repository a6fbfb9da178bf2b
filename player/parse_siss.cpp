// The lines that say what the simulated network knows and how it answers.
#include "player/parser.h"

#include <fstream>
#include <iterator>

namespace vellumo::player
{

// A reply while its lines are read; the network takes it over when the scenario runs.
struct Parser::ReplyScript
{
    siss::Behaviour behaviour;

    // Where an exception of a negative outcome goes is not where one of a proper reply goes.
    [[nodiscard]] std::vector<siss::Detail>& Exceptions()
    {
        auto* const refusal = std::get_if<siss::Refusal>(&behaviour.reply);
        return refusal == nullptr ? behaviour.exceptions : refusal->exceptions;
    }
    [[nodiscard]] std::vector<siss::Detail>& Warnings()
    {
        auto* const refusal = std::get_if<siss::Refusal>(&behaviour.reply);
        return refusal == nullptr ? behaviour.warnings : refusal->warnings;
    }
};

namespace
{

// CODE "message" [FIELD "value" FIELDCODE "field message"]
siss::Detail ReadDetail(Line& line)
{
    siss::Detail detail;
    detail.code = line.Word("the code");
    detail.message = line.Word("the message");
    if (!line.AtEnd())
    {
        detail.field = line.Word("the field");
        detail.value = line.Word("its value");
        detail.fieldCode = line.Word("the field's code");
        detail.fieldMessage = line.Word("the field's message");
    }
    return detail;
}

siss::Hostile ReadHostile(Line& line)
{
    if (line.Take("doctype"))
    {
        return {siss::Hostile::Kind::Doctype, 0};
    }
    if (line.Take("external"))
    {
        return {siss::Hostile::Kind::External, 0};
    }
    const auto size = static_cast<std::size_t>(line.Number("a size"));
    if (line.Take("MB"))
    {
        return {siss::Hostile::Kind::Huge, size * 1024 * 1024};
    }
    if (!line.Take("levels"))
    {
        line.Fail("expected MB or levels");
    }
    return {siss::Hostile::Kind::Deep, size};
}

std::string ReadWhole(Line& line, const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    if (!in)
    {
        line.Fail("the file " + file.string() + " cannot be read");
    }
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

// `citizen CF` opens a citizen of the network, who is made when nobody has that code; `citizen CF unknown` removes.
void Parser::ReadCitizen(Line& line)
{
    const auto code = line.Word("the fiscal code");
    if (line.Take("unknown"))
    {
        AddStep(line, [=](Run& run) { run.GetStage().Network().People().Remove(code); });
        return;
    }
    m_citizen = code;
    AddStep(line, [=](Run& run) { run.GetStage().Network().People().At(code); });
}

void Parser::ReadHas(Line& line)
{
    Belongs(line, m_citizen.empty() ? nullptr : &m_citizen, "citizen");
    const auto name = line.Word("the element's name");
    const auto text = line.Word("its text");
    AddStep(line, [=, code = m_citizen](Run& run) { run.GetStage().Network().People().At(code).data[name] = text; });
}

void Parser::ReadLacks(Line& line)
{
    Belongs(line, m_citizen.empty() ? nullptr : &m_citizen, "citizen");
    AddStep(line, [name = line.Word("the element's name"), code = m_citizen](Run& run)
            { run.GetStage().Network().People().At(code).data.erase(name); });
}

void Parser::ReadExemption(Line& line)
{
    Belongs(line, m_citizen.empty() ? nullptr : &m_citizen, "citizen");
    siss::Exemption exemption;
    exemption.codice = line.Word("the code");
    exemption.decorrenza = line.AtEnd() ? "" : line.Word("the first day");
    exemption.scadenza = line.AtEnd() ? "" : line.Word("the last day");
    AddStep(line, [=, code = m_citizen](Run& run)
            { run.GetStage().Network().People().At(code).esenzioni.push_back(exemption); });
}

void Parser::ReadNoExemptions(Line& line)
{
    Belongs(line, m_citizen.empty() ? nullptr : &m_citizen, "citizen");
    if (!line.Take("from") || !line.Take("nothing"))
    {
        line.Fail("expected \"exempt from nothing\"");
    }
    AddStep(line, [code = m_citizen](Run& run) { run.GetStage().Network().People().At(code).esenzioni.clear(); });
}

// `contact CF`: somebody has registered that contact already.
void Parser::ReadContact(Line& line)
{
    AddStep(line,
            [code = line.Word("the fiscal code")](Run& run) { run.GetStage().Network().KnownContacts().Add(code); });
}

void Parser::ReadOperator(Line& line)
{
    if (!line.Take("picks"))
    {
        line.Fail("expected \"operator picks\" and a fiscal code, or nobody");
    }
    const auto code = line.Word("the fiscal code");
    AddStep(line,
            [chosen = code == "nobody" ? "" : code](Run& run) { run.GetStage().Network().SetChosenCitizen(chosen); });
}

void Parser::ReadSession(Line& line)
{
    const bool active = line.Take("active");
    if (!active && !line.Take("inactive"))
    {
        line.Fail("expected active or inactive");
    }
    AddStep(line, [=](Run& run) { run.GetStage().Network().SetSessionActive(active); });
}

void Parser::ReadCard(Line& line)
{
    const bool inserted = line.Take("inserted");
    if (!inserted && !line.Take("missing"))
    {
        line.Fail("expected inserted or missing");
    }
    AddStep(line, [=](Run& run) { run.GetStage().Network().SetOperatorCard(inserted); });
}

void Parser::ReadBridge(Line& line)
{
    if (!line.Take("missing"))
    {
        line.Fail("expected \"bridge missing\"");
    }
    AddStep(line, [](Run& run) { run.GetStage().RemoveBridge(); });
}

// `reply 2 …` is for the second call of the scenario, `reply next …` for the next one from here, `reply next 2 …` for
// the one behind it, `reply every …` for each that has none of its own.
void Parser::ReadReply(Line& line)
{
    const bool every = line.Take("every");
    const bool fromHere = !every && line.Take("next");
    const auto number = every ? 0 : fromHere && !line.NextIsDigit() ? 1 : line.Number("which call, next or every");
    auto script = std::make_shared<ReplyScript>();
    auto& reply = script->behaviour.reply;
    if (line.Take("refuses"))
    {
        siss::Refusal refusal;
        refusal.code = line.Word("the code");
        refusal.message = line.Word("the message");
        refusal.withData = line.Take("with");
        if (refusal.withData && !line.Take("data"))
        {
            line.Fail("expected \"with data\"");
        }
        reply = refusal;
    }
    else if (line.Take("faults"))
    {
        siss::SoapFault fault;
        fault.code = line.Word("the fault's code");
        fault.message = line.Word("the fault's text");
        fault.detailCode = line.Take("detail") ? line.Word("the detail's code") : "";
        fault.prefix = line.Take("prefix") ? line.Word("the prefix") : fault.prefix;
        reply = fault;
    }
    else if (line.Take("raises"))
    {
        reply = siss::Raise{line.Word("the error's text")};
    }
    else if (line.Take("hostile"))
    {
        reply = ReadHostile(line);
    }
    else if (line.Take("data"))
    {
        reply = siss::DataText{line.Word("the text of the data node")};
    }
    else if (line.Take("receipt"))
    {
        const auto protocol = line.Word("the protocol number");
        reply = siss::DataXml{siss::Certificates::Receipt(protocol, line.Word("the date of reception"))};
    }
    else if (line.Take("result"))
    {
        reply = siss::DataXml{siss::Contacts::Result(line.Word("the outcome"))};
    }
    else if (line.Take("empty"))
    {
        reply = siss::Verbatim{};
    }
    else if (line.Take("lost"))
    {
        reply = siss::LostReply{};
    }
    else if (line.Take("without"))
    {
        line.Take("outcome");
        reply = siss::NoOutcome{};
    }
    else if (line.Take("file"))
    {
        reply = siss::Verbatim{ReadWhole(line, m_folder / std::filesystem::u8path(line.Word("the file")))};
    }
    else if (line.Take("text"))
    {
        reply = siss::Verbatim{line.AtEnd() ? line.BlockText("\n") : line.Word("the text")};
    }
    else if (!line.Take("answers"))
    {
        line.Fail(
            "expected answers, refuses, faults, raises, hostile, data, receipt, result, empty, lost, without outcome, "
            "file or text");
    }
    if (line.Take("after"))
    {
        script->behaviour.delayMilliseconds = line.Number("milliseconds");
        line.Take("ms");
    }
    m_reply = script;
    AddStep(line,
            [script, fromHere, number](Run& run)
            {
                auto& network = run.GetStage().Network();
                const auto before = fromHere ? network.Exchanges().size() : 0;
                network.Behave(before + static_cast<std::size_t>(number), script->behaviour);
            });
}

// How the end of the prescribing phase reports the N-th registration: `final 2 says KO "text"`, `final 2 refuses CODE
// "text"`, `final 2 empty`.
void Parser::ReadFinal(Line& line)
{
    const auto number = static_cast<std::size_t>(line.Number("which registration of the phase"));
    siss::FinalOutcome outcome;
    if (line.Take("says"))
    {
        outcome.esito = line.Word("the text of esitoRegistrazione");
        outcome.messaggio = line.Word("the message");
    }
    else if (line.Take("refuses"))
    {
        outcome.refusal.code = line.Word("the code");
        outcome.refusal.message = line.Word("the message");
        if (!line.AtEnd())
        {
            outcome.refusal.exceptions.push_back(ReadDetail(line));
        }
    }
    else if (!line.Take("empty"))
    {
        line.Fail("expected says, refuses or empty");
    }
    AddStep(line, [=](Run& run) { run.GetStage().Network().Prescribing().SetOutcome(number, outcome); });
}

void Parser::ReadException(Line& line)
{
    Belongs(line, m_reply.get(), "reply").Exceptions().push_back(ReadDetail(line));
}

void Parser::ReadWarning(Line& line)
{
    Belongs(line, m_reply.get(), "reply").Warnings().push_back(ReadDetail(line));
}

} // namespace vellumo::player
