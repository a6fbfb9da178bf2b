#include "diagnosi/replay/replay.h"

#include "diagnosi/replay/practice_seed.h"
#include "diagnosi/replay/prescription_seed.h"
#include "diagnosi/replay/scenario_text.h"
#include "diagnosi/support/mask_table.h"
#include "service/refusal.h"
#include "ui/prompt.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace vellumo::diagnosi
{
namespace
{

using Calls = std::span<const Call>;
using Kind = Operation::Kind;

// --- Requests ---

// The operation's element; empty when the request is not there or no envelope.
xml::Node OperationIn(const Call& call)
{
    const auto document = xml::Document::FromText(call.request.value_or(""));
    return document ? document->Select("/SOAP-ENV:Envelope/SOAP-ENV:Body").FirstChildElement() : xml::Node();
}

bool IsElectronic(const xml::Node& operation)
{
    return operation.Text("param/@dataSetVersion") == "2.0";
}

// --- The operator ---

// Sees the question that belongs to a refusal.
class Onlooker final : public ui::Desktop
{
public:
    std::optional<ui::Prompt> seen;

    void ShowModal(ui::Form&) override {}
    std::optional<std::string> AskFile(const std::string&, const std::string&) override { return std::nullopt; }

private:
    ui::Answer ShowBox(const ui::Prompt& prompt) override
    {
        seen = prompt;
        return ui::Answer::Retry;
    }
};

struct ButtonNames
{
    ui::Buttons buttons;
    const char* written;
    std::array<const char*, 2> names;
};

constexpr std::array<ButtonNames, 2> questions = {{
    {ui::Buttons::YesNo, "Yes/No", {"Yes", "No"}},
    {ui::Buttons::RetryCancel, "Retry/Cancel", {"Retry", "Cancel"}},
}};

// A question to which the operator's answer is not in the log, unless what followed shows it. `others`: also those
// whose answer nothing can show.
void WriteQuestion(ScenarioText& out, const Call& call, bool wasRepeated, bool others)
{
    Onlooker onlooker;
    static_cast<void>(service::AskAfterRefusal(call.outcome.code, onlooker));
    const auto* const row =
        onlooker.seen ? std::ranges::find(questions, onlooker.seen->buttons, &ButtonNames::buttons) : questions.end();
    if (row == questions.end() || (row->buttons != ui::Buttons::RetryCancel && !others))
    {
        return;
    }
    const auto usual = static_cast<std::size_t>(onlooker.seen->defaultButton) - 1;
    const bool isRetry = row->buttons == ui::Buttons::RetryCancel;
    out.Line(2, "box " + InQuotes(onlooker.seen->title) + " exclamation " + row->written + " default " +
                    row->names.at(usual));
    out.Block(3, onlooker.seen->text);
    out.Line(3, std::string("press ") + row->names.at(isRetry ? (wasRepeated ? 0 : 1) : usual));
}

// --- One scenario ---

class Scenario
{
public:
    Scenario(ScenarioText& out, const Operation& operation)
        : m_out(out)
        , m_operation(operation)
    {
    }

    void Write()
    {
        m_out.Gap();
        m_out.Line(0, "scenario " + m_operation.folder + ", " + m_operation.calls.front().service);
        switch (m_operation.kind)
        {
        case Kind::Identification:
            WriteIdentification();
            break;
        case Kind::Certificate:
            WriteCertificate();
            break;
        case Kind::Contact:
            WriteContact();
            break;
        default:
            WritePrescriptions();
            break;
        }
        m_out.Line(1, "requests " + std::to_string(m_sent.size() + m_unlogged));
        for (std::size_t i = 0; i < m_sent.size(); ++i)
        {
            m_out.Line(1, "request " + std::to_string(i + 1 + m_unlogged) + " is " + OperationIn(*m_sent[i]).Name());
            if (m_sent[i]->request->find(maskedBeginning) != std::string::npos)
            {
                m_out.Comment(2, "parts of it are masked: it is not compared as a whole");
                continue;
            }
            m_out.Line(2, "text");
            m_out.Block(3, *m_sent[i]->request);
        }
    }

private:
    [[nodiscard]] xml::Node FirstData(std::string_view path) const
    {
        return OperationIn(m_operation.calls.front()).Select(path);
    }

    // The next request gets this reply.
    void WriteReply(const Call& call)
    {
        m_sent.push_back(&call);
        const auto reply = "reply " + std::to_string(m_sent.size() + m_unlogged);
        m_out.Comment(1, std::to_string(call.number) + " - " + call.service + ", in the folder " + call.folder);
        if (call.reply.value_or("").empty())
        {
            m_out.Line(1, reply + " empty");
            return;
        }
        m_out.Line(1, reply + " text");
        m_out.Block(2, *call.reply);
    }

    void WriteReplies(Calls calls)
    {
        for (const auto& call : calls)
        {
            WriteReply(call);
        }
    }

    void WriteQuestions(Calls calls, bool others)
    {
        for (const auto& call : calls)
        {
            WriteQuestion(m_out, call, &call != &calls.back(), others);
        }
    }

    void WriteIdentification()
    {
        const bool isExtended = static_cast<bool>(FirstData("param/profiloCittadino"));
        const auto data = FirstData("param");
        if (isExtended)
        {
            PracticeSeed(m_out).FromIdentification(data);
        }
        WriteReplies(m_operation.calls);
        m_out.Line(1, "call IdentificaPaziente" +
                          (isExtended ? " with " + PracticeSeed::NameOf(PracticeSeed::IdentifiedIn(data)) : ""));
        WriteQuestions(m_operation.calls, true);
        m_out.Line(2, "returns anything");
    }

    void WriteCertificate()
    {
        PracticeSeed(m_out).FromCertificate(FirstData("param/invioCertificato"));
        WriteReplies(m_operation.calls);
        m_out.Line(1, "call InviaCertificato with certificate 1");
        m_out.Line(2, "returns False");
    }

    void WriteContact()
    {
        const auto inserted = FirstData("datiContatto");
        const auto data = inserted ? inserted : FirstData("modificaDatiContatto");
        PracticeSeed(m_out).FromContact(data);
        WriteReplies(m_operation.calls);
        m_out.Line(1, "call InserisciContatto with " + PracticeSeed::NameOf(PracticeSeed::ContactIn(data)));
        m_out.Line(2, "returns False");
    }

    // The window of the print options, where what was sent is not what it offers.
    void WriteOptions(const Call* registration)
    {
        const auto operation = registration == nullptr ? xml::Node() : OperationIn(*registration);
        const auto flags = operation.Select("param/nuovaPrescrizione/datiAmministrativiPrescrizione");
        const bool isElectronic = IsElectronic(operation);
        const bool silent = isElectronic && flags.Text("flagAltro") == "2";
        const bool bySiss = !isElectronic && flags.Text("stampaRicetta") == "SI";
        if (silent || bySiss)
        {
            m_out.Line(2, "window " + InQuotes("Modalità di stampa"));
            m_out.Line(3, silent ? "choose entry " + InQuotes("Non stampare promemoria!") + " of list 2"
                                 : "choose entry " + InQuotes("Stampa da SISS") + " of list 1");
            m_out.Line(3, "press " + InQuotes("OK"));
        }
    }

    void WritePrescriptions()
    {
        const Calls all = m_operation.calls;
        const auto is = [](const Call& call, std::string_view begin) { return call.service.starts_with(begin); };
        const auto registers = [&](const Call& call) { return is(call, "Registra "); };
        const auto opened = std::ranges::find_if_not(all, [&](const Call& call) { return is(call, "Inizia "); });
        const auto opening = all.first(static_cast<std::size_t>(opened - all.begin()));
        const auto first = std::ranges::find_if(all, registers);
        if (opening.empty())
        {
            m_out.Comment(1, "the opening of this session is not in the log: the simulated network answers it");
            m_unlogged = 1;
        }
        m_out.Line(1, std::string("setting CCECartellaElettronica ") +
                          (IsElectronic(OperationIn(all.front())) ? "True" : "False"));
        m_out.Line(1, "setting CCEInviaRicettaFarmaciClasseC True");
        WriteReplies(opening);
        m_out.Line(1, "call ApriSessionePrescrizione");
        WriteOptions(first == all.end() ? nullptr : &*first);
        WriteQuestions(opening, false); // the others say more there
        m_out.Line(2, "returns anything");
        for (const auto& call : all.subspan(opening.size()))
        {
            if (registers(call))
            {
                WriteRegistration(call);
            }
            else
            {
                WriteEnd(call);
            }
        }
    }

    void WriteRegistration(const Call& call)
    {
        const bool isDrug = call.service.ends_with("Farmaci");
        std::string why;
        const auto form = m_prescriptions.Make(OperationIn(call).Select("param"), isDrug, why);
        if (!form)
        {
            m_out.Comment(1, std::to_string(call.number) + " - " + call.service +
                                 ": no rows of the practice are known that make this request, for " + why);
            return;
        }
        WriteReply(call);
        m_out.Line(1, "call RegistraPrescrizione with " + std::to_string(*form) + (isDrug ? " drugs" : " tests"));
        m_out.Line(2, "returns anything");
    }

    void WriteEnd(const Call& call)
    {
        if (!call.service.starts_with("Fine "))
        {
            m_out.Comment(1, std::to_string(call.number) + " - " + call.service + ": no part of a session");
            return;
        }
        WriteReply(call);
        m_out.Line(1, "call ChiudiSessionePrescrizione");
        m_out.Line(2, "returns anything");
    }

    ScenarioText& m_out;
    const Operation& m_operation;
    PrescriptionSeed m_prescriptions{m_out};
    std::vector<const Call*> m_sent; // that the scenario sends
    std::size_t m_unlogged = 0;      // sent before them
};

// Operations of one second lie in one folder, and the log does not part them.
bool BeginsAnother(Kind kind, const Call& before, const Call& call)
{
    Onlooker onlooker;
    switch (kind)
    {
    case Kind::Identification:
        return service::AskAfterRefusal(before.outcome.code, onlooker) != service::AfterRefusal::Retry;
    case Kind::Contact:
        return call.service.starts_with("Inserimento ");
    default:
        return kind == Kind::Certificate;
    }
}

std::vector<Operation> Separated(const Operation& operation)
{
    std::vector<Operation> parts;
    for (const auto& call : operation.calls)
    {
        if (parts.empty() || BeginsAnother(operation.kind, parts.back().calls.back(), call))
        {
            parts.push_back({operation.kind, operation.time, operation.folder, {}});
        }
        parts.back().calls.push_back(call);
    }
    return parts;
}

// Why it cannot be played; "" when it can.
std::string WhyNot(const Operation& operation)
{
    if (operation.kind == Kind::NoCalls || operation.calls.empty())
    {
        return "nothing was sent";
    }
    if (operation.kind == Kind::Other)
    {
        return "services that no operation of the library calls";
    }
    return std::ranges::all_of(operation.calls, [](const Call& call) { return static_cast<bool>(OperationIn(call)); })
               ? ""
               : "a request is missing or cannot be read";
}

} // namespace

std::string ScenarioOf(const ExchangeRecord& record)
{
    ScenarioText out;
    out.Comment(0,
                "Made from a log of exchanges: patients as the requests have them, replies as they came. The log does "
                "not tell what");
    out.Comment(0,
                "the operator did: windows are answered by their default button until lines below the calls say more.");
    out.Line(0, "user bianchi");
    out.Line(0, "setting CCEAbilitaLog True");
    out.Line(0, "operator answers by default");
    bool any = false;
    for (const auto& operation : record.operations)
    {
        if (const auto why = WhyNot(operation); !why.empty())
        {
            out.Gap();
            out.Comment(0, operation.folder + " is not played: " + why);
            continue;
        }
        any = true;
        for (const auto& part : Separated(operation))
        {
            Scenario(out, part).Write();
        }
    }
    for (const auto& skipped : record.skipped)
    {
        out.Comment(0, skipped);
    }
    return any ? out.Text() : "";
}

} // namespace vellumo::diagnosi
