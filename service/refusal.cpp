#include "service/refusal.h"

#include "service/siss_codes.h"

#include <algorithm>
#include <array>
#include <string>

namespace vellumo::service
{
namespace
{

constexpr const char* noSession = "La sessione SISS non risulta essere attivata.\r\n"
                                  "Si vuole proseguire senza attivare la sessione?";
constexpr const char* noCitizen =
    "Non è stato trovata nessun anagrafica, sul server SISS, corrispondente ai dati inseriti.\r\n"
    "Si vuole comunque continuare?";
constexpr const char* noCard = "L'operatore non è stato autenticato al SISS o non è presente la carta operatore.\r\n"
                               "Autenticarsi al SISS e riprovare ad effettuare l'operazione.";

struct Refusal
{
    std::string_view code;
    AfterRefusal accepted;          // with the first of the buttons; any other ends the operation
    const char* question = nullptr; // null: the operator is not asked, nothing more is done
    ui::Buttons buttons = ui::Buttons::YesNo;
    int defaultButton = 1;
};

constexpr std::array<Refusal, 5> refusals = {{
    {code::sebcont0001, AfterRefusal::GoOnWithoutSession, noSession, ui::Buttons::YesNo, 2},
    {code::appl000103, AfterRefusal::End},
    {code::sebc00001, AfterRefusal::GoOnWithoutCitizen, noCitizen, ui::Buttons::YesNo, 1},
    {code::pdcar012, AfterRefusal::Retry, noCard, ui::Buttons::RetryCancel, 1},
    {code::pdcar001, AfterRefusal::Retry, noCard, ui::Buttons::RetryCancel, 1},
}};

} // namespace

AfterRefusal AskAfterRefusal(std::string_view code, ui::Desktop& desktop, std::string_view note)
{
    const auto* const refusal = std::ranges::find(refusals, code, &Refusal::code);
    if (refusal == refusals.end())
    {
        return AfterRefusal::Report;
    }
    if (refusal->question == nullptr)
    {
        return AfterRefusal::End;
    }
    std::string question = refusal->question;
    if (!note.empty() && refusal->accepted != AfterRefusal::Retry)
    {
        question.append("\r\n\r\n").append(note);
    }
    const auto answer =
        desktop.Show({question, "Attenzione!!", ui::Icon::Exclamation, refusal->buttons, refusal->defaultButton});
    const bool accepted = answer == ui::Answer::Yes || answer == ui::Answer::Retry;
    return accepted ? refusal->accepted : AfterRefusal::End;
}

} // namespace vellumo::service
