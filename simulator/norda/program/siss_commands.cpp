// What the simulated network knows, and how it answers.
#include "host/fault.h"
#include "simulator/norda/program/command.h"
#include "simulator/norda/program/desk.h"

#include <ostream>

namespace vellumo::norda
{
namespace
{

std::size_t Count(const std::string& number)
{
    return static_cast<std::size_t>(host::Value(number).ToInteger());
}

void ListCitizens(Desk& desk, const Given& given)
{
    for (const auto& [code, citizen] : desk.Network().People().All())
    {
        const auto line = code + "  " + citizen.Get("cognomeCittadino") + ' ' + citizen.Get("nomeCittadino") + ", " +
                          citizen.Get("comuneResidenzaCittadino");
        if (line.find(given[0]) != std::string::npos)
        {
            desk.Out() << "  " << line << '\n';
        }
    }
}

void SetSession(Desk& desk, const Given& given)
{
    desk.Network().SetSessionActive(given[0] == "attiva");
    desk.Out() << "Sessione SISS " << given[0] << ".\n";
}

void SetCard(Desk& desk, const Given& given)
{
    desk.Network().SetOperatorCard(given[0] == "inserita");
    desk.Out() << "Carta dell'operatore " << given[0] << ".\n";
}

void KnowContact(Desk& desk, const Given& given)
{
    desk.Network().KnownContacts().Add(given[0]);
    desk.Out() << "Il SISS conosce i contatti di " << given[0] << ".\n";
}

// The number counts from here: 1 is the next request.
void Answer(Desk& desk, const std::string& number, decltype(siss::Behaviour::reply) reply)
{
    siss::Behaviour behaviour;
    behaviour.reply = std::move(reply);
    const auto count = number == "sempre" ? 0 : Count(number);
    if (number != "sempre" && count == 0)
    {
        throw host::Fault("Le richieste si contano da 1.");
    }
    desk.Answer(count == 0 ? 0 : desk.Network().Exchanges().size() + count, behaviour);
    desk.Out() << (count == 0   ? "Da ora il SISS risponde così.\n"
                   : count == 1 ? "Il SISS risponderà così alla prossima richiesta.\n"
                                : "Il SISS risponderà così alla richiesta numero " + number + " da ora.\n");
}

void AnswerBriefly(Desk& desk, const Given& given)
{
    decltype(siss::Behaviour::reply) reply;
    if (given[1] == "vuota")
    {
        reply = siss::Verbatim{};
    }
    else if (given[1] == "persa")
    {
        reply = siss::LostReply{};
    }
    Answer(desk, given[0], reply);
}

template <bool isWarning>
void AddEntry(Desk& desk, const Given& given)
{
    desk.AddToAnswer(isWarning, {given[0], given[1], {}, {}, {}, {}});
    desk.Out() << (isWarning ? "Avviso aggiunto alla risposta.\n" : "Eccezione aggiunta alla risposta.\n");
}

void SetFinal(Desk& desk, const Given& given)
{
    desk.Network().Prescribing().SetOutcome(Count(given[0]), {{}, {}, {given[1], given[2], {}, {}}});
    desk.Out() << "Alla chiusura il SISS rifiuterà la registrazione numero " << given[0] << ".\n";
}

} // namespace

const Commands sissCommands = {
    {"cittadini", "[TESTO…]", "i cittadini che la rete conosce", ListCitizens},
    {"sessione", "attiva|inattiva", "la sessione di questa postazione", SetSession},
    {"carta", "inserita|assente", "la carta dell'operatore", SetCard},
    {"noto", "CODICEFISCALE", "i contatti di quel cittadino sono già registrati", KnowContact},
    {"risposta", "sempre|#QUANDO normale|vuota|persa",
     "come risponde: sempre, o alla richiesta numero QUANDO da ora (1: la prossima)", AnswerBriefly},
    {"risposta", "sempre|#QUANDO errore CODICE MESSAGGIO…", "con un esito negativo",
     [](Desk& desk, const Given& given) {
         Answer(desk, given[0], siss::Refusal{given[2], given[3], {}, {}});
     }},
    {"risposta", "sempre|#QUANDO testo TESTO…", "con un testo qualsiasi",
     [](Desk& desk, const Given& given) { Answer(desk, given[0], siss::Verbatim{given[2]}); }},
    {"eccezione", "CODICE MESSAGGIO…", "aggiunge un'eccezione all'ultima \"risposta\"", AddEntry<false>},
    {"avviso", "CODICE MESSAGGIO…", "aggiunge un avviso all'ultima \"risposta\"", AddEntry<true>},
    {"esito", "#NUMERO CODICE MESSAGGIO…", "alla chiusura della sessione rifiuta la registrazione con quel numero",
     SetFinal},
};

} // namespace vellumo::norda
