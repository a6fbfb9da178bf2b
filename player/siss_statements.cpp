// What the simulated network knows, and how it answers.
#include "player/run.h"
#include "player/written.h"

#include <sstream>

namespace vellumo::player
{
namespace
{

siss::Network& Network(Run& run)
{
    return run.GetStage().Network();
}

siss::Citizen& OpenCitizen(Run& run)
{
    return Network(run).People().At(run.Open().citizen);
}

void RemoveCitizen(Run& run, const Node& node)
{
    if (Network(run).People().Find(node.Text("CF")) == nullptr)
    {
        run.HasNoEffect(node, "SISS knows nobody of that code");
    }
    Network(run).People().Remove(node.Text("CF"));
}

void OpenCitizenOf(Run& run, const Node& node)
{
    run.Open().citizen = node.Text("CF");
    static_cast<void>(OpenCitizen(run));
    run.PlayBelow(node);
}

void RemoveElement(Run& run, const Node& node)
{
    if (OpenCitizen(run).data.erase(node.Text("ELEMENT")) == 0)
    {
        run.HasNoEffect(node, "the citizen has no such element");
    }
}

void AddExemptions(Run& run, const Node& node)
{
    for (int n = 1; n <= (node.Has("times") ? node.Number("N") : 1); ++n)
    {
        OpenCitizen(run).esenzioni.push_back(
            {Replaced(node.Text("CODE"), "{n}", std::to_string(n)), node.Text("FIRSTDAY"), node.Text("LASTDAY")});
    }
}

siss::Detail EntryOf(const Node& entry)
{
    return {entry.Text("CODE"),  entry.Text("MESSAGE"),   entry.Text("FIELD"),
            entry.Text("VALUE"), entry.Text("FIELDCODE"), entry.Text("FIELDTEXT")};
}

void AddEntry(Run& run, const Node& node)
{
    run.Open().reply.Add(node.Keyword() == "warning", EntryOf(node.parts.front()));
}

void Answer(Run& run, const Node& node)
{
    run.Open().reply = {};
    node.parts.back().Perform(run);
    run.Open().reply.delayMilliseconds = node.Has("after") ? node.Number("M") : 0;
    run.PlayBelow(node);
    const auto& number = node.parts.front();
    auto& network = Network(run);
    std::size_t call = 0; // every
    if (number.Keyword() != "every")
    {
        call = (number.Has("N") ? number.Count("N") : 1) + (number.Has("next") ? network.Exchanges().size() : 0);
    }
    network.Behave(call, run.Open().reply);
    run.MustHaveEffect(node, "the call that is to be answered so never came",
                       [&network, call] { return network.HasBehaved(call); });
}

void SetFinal(Run& run, const Node& node)
{
    siss::FinalOutcome outcome;
    if (node.Has("says"))
    {
        outcome = {node.Text("TEXT"), node.Text("MESSAGE"), {}};
    }
    else if (node.Has("refuses"))
    {
        outcome.refusal = {node.Text("CODE"), node.Text("MESSAGE"), {}, {}};
        std::transform(node.parts.begin(), node.parts.end(), std::back_inserter(outcome.refusal.exceptions), EntryOf);
    }
    auto& phase = Network(run).Prescribing();
    const auto number = node.Count("N");
    phase.SetOutcome(number, outcome);
    run.MustHaveEffect(node, "no phase with that registration was ended",
                       [&phase, number] { return phase.HasReported(number); });
}

void SetOrder(Run& run, const Node& node)
{
    std::istringstream words(node.Text("ORDER"));
    std::vector<std::size_t> order;
    for (std::string word; words >> word;)
    {
        order.push_back(word == "new" ? siss::PrescribingPhase::newCode : std::stoul(word));
    }
    auto& phase = Network(run).Prescribing();
    phase.SetOrder(order);
    run.MustHaveEffect(node, "no phase was ended behind it", [&phase] { return !phase.HasOrder(); });
}

template <class Reply>
void AnswerWith(Run& run, Reply reply)
{
    run.Open().reply.reply = std::move(reply);
}

void AnswerFault(Run& run, const Node& node)
{
    siss::SoapFault fault{
        .code = node.Text("CODE"), .message = node.Text("MESSAGE"), .detailCode = node.Text("DETAIL")};
    fault.prefix = node.Has("PREFIX") ? node.Text("PREFIX") : fault.prefix;
    AnswerWith(run, fault);
}

void Harm(Run& run, const Node& node)
{
    using siss::Hostile;
    constexpr std::size_t megabyte = 1024 * 1024;
    AnswerWith(run, node.Has("doctype")    ? Hostile{Hostile::Kind::Doctype, 0}
                    : node.Has("external") ? Hostile{Hostile::Kind::External, 0}
                    : node.Has("MB")       ? Hostile{Hostile::Kind::Huge, node.Count("N") * megabyte}
                                           : Hostile{Hostile::Kind::Deep, node.Count("N")});
}

} // namespace

const Group sissStatements = {
    "SISS",
    Role::Step,
    {
        {"", "citizen CF unknown", "removes a citizen", RemoveCitizen},
        {"", "citizen CF", "opens a citizen for the lines below; makes one when nobody has the code", OpenCitizenOf},
        {"citizen", "has ELEMENT 'TEXT'", "an element of `datiCittadino`; `medico.NAME` for one of `datiMedico`",
         [](Run& run, const Node& node) { OpenCitizen(run).data[node.Text("ELEMENT")] = node.Text("TEXT"); }},
        {"citizen", "lacks ELEMENT", "without that element", RemoveElement},
        {"citizen", "exemption N times CODE [FIRSTDAY] [LASTDAY]", "so many more; `{n}` in the code counts them",
         AddExemptions},
        {"citizen", "exemption CODE [FIRSTDAY] [LASTDAY]", "one exemption more", AddExemptions},
        {"citizen", "exempt from nothing", "none of them",
         [](Run& run, const Node&) { OpenCitizen(run).esenzioni.clear(); }},
        {"", "contact CF", "somebody has registered that contact already",
         [](Run& run, const Node& node) { Network(run).KnownContacts().Add(node.Text("CF")); }},
        {"", "operator picks CF", "whom the operator chooses in SISS's own search window; or `nobody`",
         [](Run& run, const Node& node)
         { Network(run).SetChosenCitizen(node.Text("CF") == "nobody" ? "" : node.Text("CF")); }},
        {"", "session active/inactive", "the SISS session; without it the bridge answers an error text",
         [](Run& run, const Node& node) { Network(run).SetSessionActive(node.Has("active")); }},
        {"", "card inserted/missing", "the operator's card",
         [](Run& run, const Node& node) { Network(run).SetOperatorCard(node.Has("inserted")); }},
        {"", "bridge missing", "the bridge is not registered",
         [](Run& run, const Node&) { run.GetStage().Host().RemoveBridge(); }},
        {"", "reply <which> <reply> [after M ms]",
         "how a call of the scenario is answered; `after` delays it. The last such line for a call counts", Answer},
        {"reply", "exception <entry>", "an entry of the reply's list", AddEntry},
        {"reply", "warning <entry>", "", AddEntry},
        {"", "final N says TEXT 'MESSAGE'",
         "how the end of the prescribing phase reports its N-th registration, other than OK", SetFinal},
        {"", "final N refuses CODE 'MESSAGE' [<entry>]", "", SetFinal},
        {"", "final N empty", "", SetFinal},
        {"", "final order 'ORDER'",
         "in which order it reports them: their numbers, some left out, some twice, `new` for one of a prescription "
         "that was never registered",
         SetOrder},
    }};

const Group callNumberStatements = {
    "which",
    Role::Part,
    {
        {"", "every", "all calls without a line of their own", nothing},
        {"", "next [N]", "the next call from here, or the one N behind the last", nothing},
        {"", "N", "the N-th call of the scenario", nothing},
    }};

const Group replyStatements = {
    "reply",
    Role::Part,
    {
        {"", "answers", "as the network's state has it", nothing},
        {"", "refuses CODE 'MESSAGE' [with data]",
         "a negative outcome; `with data`: the service has done its work and says so, too",
         [](Run& run, const Node& node) {
             AnswerWith(run, siss::Refusal{node.Text("CODE"), node.Text("MESSAGE"), {}, {}, node.Has("data")});
         }},

        {"", "faults CODE 'MESSAGE' [detail DETAIL] [prefix PREFIX]", "a SOAP fault", AnswerFault},
        {"", "raises 'MESSAGE'", "the bridge raises an error",
         [](Run& run, const Node& node) { AnswerWith(run, siss::Raise{node.Text("MESSAGE")}); }},
        {"", "empty", "no text", [](Run& run, const Node&) { AnswerWith(run, siss::Verbatim{}); }},
        {"", "lost", "accepted, but the reply never arrives",
         [](Run& run, const Node&) { AnswerWith(run, siss::LostReply{}); }},
        {"", "without outcome", "well-formed, without its outcome",
         [](Run& run, const Node&) { AnswerWith(run, siss::NoOutcome{}); }},
        {"", "data 'TEXT'", "a good outcome with that text as its data",
         [](Run& run, const Node& node) { AnswerWith(run, siss::DataText{node.Text("TEXT")}); }},
        {"", "receipt 'PROTOCOL' 'DATE'", "a good outcome of a certificate with that number and date of reception",
         [](Run& run, const Node& node)
         { AnswerWith(run, siss::DataXml{siss::Certificates::Receipt(node.Text("PROTOCOL"), node.Text("DATE"))}); }},
        {"", "result 'TEXT'", "a good outcome of a contact with that text, such as `S` or `N`",
         [](Run& run, const Node& node) { AnswerWith(run, siss::DataXml{siss::Contacts::Result(node.Text("TEXT"))}); }},
        {"", "file 'FILE'", "the text of a file from beside the scenario",
         [](Run& run, const Node& node)
         { AnswerWith(run, siss::Verbatim{FileText(FileBeside(node, node.Text("FILE")))}); }},

        {"", "text ['TEXT']", "this very text, or that of its block",
         [](Run& run, const Node& node)
         { AnswerWith(run, siss::Verbatim{node.Has("TEXT") ? node.Text("TEXT") : Joined(node.block, "\n")}); }},
        {"", "hostile doctype/external", "made on demand, to do harm", Harm},
        {"", "hostile N MB/levels", "", Harm},
    }};

const Group entryStatements = {
    "entry",
    Role::Part,
    {{"", "CODE 'MESSAGE' [FIELD 'VALUE' FIELDCODE 'FIELDTEXT']", "what is wrong, and with which field", nothing}}};

} // namespace vellumo::player
