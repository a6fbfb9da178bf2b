// The calls that the host makes, their arguments and windows, and what they return.
#include "player/run.h"
#include "player/written.h"
#include "simulator/screen/controls.h"

#include <tuple>
#include <type_traits>

namespace vellumo::player
{
namespace
{

using norda::Passing;
using norda::ProviderClient;

// What the scenario gave for a parameter of the call: arguments in their order, which may be left out, the kind of a
// prescription, the session that the host keeps.
template <class Parameter>
Parameter Given(Run& run, std::size_t& next)
{
    auto& [arguments, kind, outcome] = run.Current();
    if constexpr (std::is_same_v<Parameter, const norda::Argument&>)
    {
        static const norda::Argument leftOut;
        return next < arguments.size() ? arguments[next++] : leftOut;
    }
    else if constexpr (std::is_same_v<Parameter, bool&>)
    {
        return outcome.gestito.emplace(false);
    }
    else if constexpr (std::is_same_v<Parameter, std::int32_t>)
    {
        return kind;
    }
    else
    {
        return run.GetStage().Host().session;
    }
}

std::string Returned(Run&, bool value)
{
    return BooleanText(value);
}

std::string Returned(Run&, std::int32_t value)
{
    return std::to_string(value);
}

std::string Returned(Run& run, std::shared_ptr<norda::PrescriptionSession> session)
{
    run.GetStage().Host().session = std::move(session);
    return run.GetStage().Host().session ? "session" : "nothing";
}

template <class Result, class... Parameters>
Result Call(Run& run, Result (ProviderClient::*call)(Parameters...))
{
    [[maybe_unused]] std::size_t next = 0;
    const std::tuple<Parameters...> given{Given<Parameters>(run, next)...};
    return std::apply([&](auto&... each) { return (run.GetStage().Host().Provider().*call)(each...); }, given);
}

template <auto call>
void Ask(Run& run, const Node&)
{
    run.Current().outcome.returned = Returned(run, Call(run, call));
}

template <Passing passing>
void Pass(Run& run, const Node&)
{
    run.Current().arguments.push_back({passing, {}});
}

void PassPatient(Run& run, const Node& node)
{
    const auto id = run.PatientId(node.Text("CF"));
    if (id == 0)
    {
        throw Differs("the practice has no patient " + node.Text("CF"));
    }
    run.Current().arguments.push_back({Passing::ByValue, id});
}

void PassCertificate(Run& run, const Node& node)
{
    run.Current().arguments.push_back({Passing::ByValue, {}, run.GetStage().Host().LoadCertificate(node.Number("N"))});
}

void PassReference(Run& run, const Node& node)
{
    node.parts.front().Perform(run);
    run.Current().arguments.back().passing = Passing::ByReference;
}

void CallMeanwhile(Run& run, const Node& node)
{
    run.CallMeanwhile(node);
}

void LookAtBox(Run& run, const Node& node)
{
    const auto& box = run.TheWindow();
    Expect("icon", node.choice, screen::NameOf(box.Icon()));
    const auto buttons = node.Text("BUTTONS");
    const auto isDefault = node.Has("default") ? node.Text("BUTTON") : buttons.substr(0, buttons.find('/'));
    std::string marked = "none";
    for (auto* const button : box.All<ui::Button>())
    {
        marked = button->isDefault ? screen::CaptionOf(*button) : marked;
    }
    Expect("buttons and default", buttons + ", " + isDefault,
           Joined(screen::CaptionsOf(box.All<ui::Button>()), "/") + ", " + marked);
    Expect("text", Joined(node.block, "\r\n"), box.Text());
}

} // namespace

const Group callStatements = {
    "calls",
    Role::Step,
    {
        {"", "create provider [faults 'PART']",
         "makes the provider now; otherwise the first call does. The session that the host kept is gone. With `faults` "
         "it must not succeed, with an error whose text contains PART",
         [](Run& run, const Node& node) { run.CreateProvider(node); }},
        {"", "call <operation>", "the host calls the library. Below it stand its windows in order, then its result",
         [](Run& run, const Node& node) { run.Call(node); }},
        {"call", "box 'TITLE' critical/exclamation/information/plain BUTTONS [default BUTTON]",
         "a box, its text in a block. Buttons are `OK`, `Yes/No`, `Yes/No/Cancel`, `Retry/Cancel`, whatever the "
         "system's language shows; without `default` it is the first",
         LookAtBox},
        {"call", "window 'TITLE'", "a window of the library. Wait windows are checked with the requests", nothing},
        {"call", "dialog 'TITLE'", "the system's dialog for choosing a file, on Windows the real one", nothing},
        {"call", "watch 'TITLE'",
         "a window with a progress bar, which is at work and waits for nobody. It may stand anywhere among the "
         "windows. Each line below it must have been so at some moment, and the bar must never go back",
         nothing},
        {"call", "meanwhile request N <operation> returns VALUE",
         "while request N is on its way a timer of the host's hands everything over anew and calls the library, which "
         "returns or faults at once",
         CallMeanwhile},
        {"call", "meanwhile request N <operation> faults ['PART']", "", CallMeanwhile},
        {"", "operator answers by default",
         "in all calls from here on, windows and boxes that no line expects next are answered by their default button; "
         "one that keeps coming back is closed by its frame. So begins a scenario made from a log",
         [](Run& run, const Node&) { run.AnswerByDefault(); }},
        {"call", "returns anything", "whatever the call returns; `gestito` may be left out then", nothing},
        {"call", "returns patient CF", "what the call returns: the patient's number in the practice", nothing},
        {"call", "returns VALUE…", "what the call returns", nothing},
        {"call", "gestito True/False", "the by-reference argument afterwards; `IdentificaPaziente` needs it", nothing},
        {"call", "faults ['PART']", "the call ends with an error whose text contains PART", nothing},
    }};

const Group operationStatements = {
    "operation",
    Role::Part,
    {
        {"", "IdentificaPaziente [with <argument>]", "the patient", Ask<&ProviderClient::IdentificaPaziente>},
        {"", "VerificaPaziente [with <argument>]", "", Ask<&ProviderClient::VerificaPaziente>},
        {"", "InserisciContatto [with <argument>]", "", Ask<&ProviderClient::InserisciContatto>},
        {"", "IsActive", "no argument", Ask<&ProviderClient::IsActive>},
        {"", "IsPersonaleStudio", "", Ask<&ProviderClient::IsPersonaleStudio>},
        {"", "Studio", "", Ask<&ProviderClient::Studio>},
        {"", "Sincronizza", "", Ask<&ProviderClient::Sincronizza>},
        {"", "SincronizzaPazienti", "", Ask<&ProviderClient::SincronizzaPazienti>},
        {"", "InviaCertificato [with <argument>]", "the certificate", Ask<&ProviderClient::InviaCertificato>},
        {"", "AnnullaCertificato [with <argument>]", "", Ask<&ProviderClient::AnnullaCertificato>},
        {"", "ApriSessionePrescrizione", "returns `session` or `nothing`; the host keeps the session",
         Ask<&ProviderClient::ApriSessionePrescrizione>},
        {"", "RegistraPrescrizione with <argument> <kind>",
         "the prescription form, or the form and the number of the prescription; in the session that the host "
         "keeps",
         Ask<&ProviderClient::RegistraPrescrizione>},
        {"", "RegistraPrescrizioneSingola with <argument> <argument> <kind>", "",
         Ask<&ProviderClient::RegistraPrescrizioneSingola>},
        {"", "ChiudiSessionePrescrizione", "ends that session", Ask<&ProviderClient::ChiudiSessionePrescrizione>},
        {"", "VerificaPrescrizione with <argument> <kind>", "need no session",
         Ask<&ProviderClient::VerificaPrescrizione>},
        {"", "VerificaPrescrizioneSingola with <argument> <argument> <kind>", "",
         Ask<&ProviderClient::VerificaPrescrizioneSingola>},
        {"", "AnnullaPrescrizione with <argument> <argument> <kind>", "", Ask<&ProviderClient::AnnullaPrescrizione>},
        {"", "Release",
         "(Windows targets) the host lets go of each reference to the provider, which returns `nothing`; a call that "
         "runs ends as it would have. The next one makes another provider, and the session that the host kept is gone",
         [](Run& run, const Node&)
         {
             run.GetStage().Host().LetGoOfProvider();
             run.Current().outcome.returned = "nothing";
         }},
    }};

const Group argumentStatements = {
    "argument",
    Role::Part,
    {
        {"", "missing", "left out by the caller", Pass<Passing::Missing>},
        {"", "empty", "a variant without a value, or with a database NULL", Pass<Passing::Empty>},
        {"", "null", "", Pass<Passing::Null>},
        {"", "nothing", "an object variable without an object", Pass<Passing::NoObject>},
        {"", "object", "an object that is no record", Pass<Passing::OtherObject>},
        {"", "reference <argument>", "passed by reference", PassReference},
        {"", "patient CF", "the patient's number in the practice", PassPatient},
        {"", "certificate N", "the host's record of that certificate", PassCertificate},
        {"", "QUOTED", "a text in double quotes, or a number",
         [](Run& run, const Node& node) {
             run.Current().arguments.push_back({Passing::ByValue, node.Text("QUOTED")});
         }},
        {"", "N", "",
         [](Run& run, const Node& node) {
             run.Current().arguments.push_back({Passing::ByValue, node.Number("N")});
         }},
    }};

const Group kindStatements = {
    "kind",
    Role::Part,
    {
        {"", "drugs", "what the prescription holds; a number for any other",
         [](Run& run, const Node&) { run.Current().kind = host::kindDrugs; }},
        {"", "tests", "", [](Run& run, const Node&) { run.Current().kind = host::kindTests; }},
        {"", "N", "", [](Run& run, const Node& node) { run.Current().kind = node.Number("N"); }},
    }};

} // namespace vellumo::player
