#include "diagnosi/exchanges/outcome_words.h"

#include "host/text.h"

#include <array>
#include <cstdio>
#include <string_view>
#include <utility>

namespace vellumo::diagnosi
{
namespace
{

constexpr std::size_t longestSaid = 200; // characters of a text in a line

std::string MayBeDone(Place place)
{
    switch (place)
    {
    case Place::Opens:
        return "Nessuna ricetta è partita: ripetere l'operazione.";
    case Place::Ends:
        return "Le ricette accettate sono sul SISS: il giornale ha per ognuna una riga \"senza conferma alla "
               "chiusura\" con il suo IUP. Verificarle sul SISS.";
    default:
        return "Il SISS può averla eseguita lo stesso: prima di ripeterla cercare sul SISS le ricette del paziente.";
    }
}

// What SISS may have done although nobody here knows.
std::string MayBeDone(const Call& call)
{
    switch (KindOfService(call.service))
    {
    case Operation::Kind::Prescriptions:
        return MayBeDone(PlaceOfService(call.service));
    case Operation::Kind::Certificate:
        return "L'INPS può avere il certificato: controllare sul SISS prima di inviarlo di nuovo, altrimenti diventano "
               "due.";
    case Operation::Kind::Contact:
        return "Il SISS può avere il contatto o no; il programma può inviarlo di nuovo.";
    default:
        return "Il paziente nel programma è rimasto com'era; ripetere l'operazione.";
    }
}

std::string WithCode(const std::string& code, const std::string& text)
{
    const std::string line = code.empty() ? text : code + (text.empty() ? "" : " · " + text);
    return host::FirstCharacters(line, longestSaid);
}

// "IUP 0300A4000000001, protocollo 030260000001 · IUP …"
std::string WordsOf(const std::vector<GivenCodes>& given)
{
    std::string words;
    for (const GivenCodes& codes : given)
    {
        std::string_view before = words.empty() ? "" : " · ";
        for (const auto& [name, code] : std::array<std::pair<std::string_view, std::string_view>, 3>{
                 {{"IUP ", codes.iup}, {"protocollo ", codes.protocol}, {"protocollo INPS ", codes.inpsProtocol}}})
        {
            if (!code.empty())
            {
                words.append(before).append(name).append(code);
                before = ", ";
            }
        }
    }
    return host::FirstCharacters(words, longestSaid);
}

OutcomeWords WordsOfAccepted(const Outcome& outcome)
{
    if (const auto count = outcome.unconfirmed.Count(); count > 0)
    {
        const auto& first = *outcome.unconfirmed.Item(1);
        return {count == 1 ? "Accettata, 1 ricetta non confermata"
                           : "Accettata, " + std::to_string(count) + " ricette non confermate",
                WithCode(first.Code, first.Message),
                {"La fine della fase è riuscita, ma il SISS non conferma ogni ricetta: confrontare i codici in "
                 "RicettaSSN con le righe di SISS\\Tracce."}};
    }
    if (outcome.warnings.Count() > 0)
    {
        const auto& first = *outcome.warnings.Item(1);
        return {"Accettata con avvisi", WithCode(first.Code, first.Message), {}};
    }
    return {"Accettata", WordsOf(outcome.given), {}};
}

} // namespace

OutcomeWords WordsOf(const Call& call)
{
    const Outcome& outcome = call.outcome;
    switch (outcome.kind)
    {
    case Outcome::Kind::Accepted:
        return WordsOfAccepted(outcome);
    case Outcome::Kind::Refused:
        return {
            "Rifiutata", outcome.code.empty() ? "esito " + outcome.result : WithCode(outcome.code, outcome.text), {}};
    case Outcome::Kind::SoapFault:
        return {
            "Errore del servizio",
            WithCode(outcome.code, outcome.text),
            {"Il servizio ha risposto con un errore tecnico (SOAP Fault) invece che con un esito.", MayBeDone(call)}};
    case Outcome::Kind::NotXml:
        return {"Risposta non XML",
                WithCode("", outcome.text),
                {"Il client SISS ha risposto con un testo che non è un documento XML: di solito è il suo messaggio di "
                 "errore. Vellumo lo tratta come il codice SEBCONT0001.",
                 MayBeDone(call)}};
    case Outcome::Kind::NoOutcome:
        return {"Senza esito",
                outcome.text.empty() ? "busta senza risposta" : "elemento " + outcome.text,
                {"La risposta è XML ma non ha l'elemento che dice com'è andata: riferire all'assistenza SISS la "
                 "risposta.",
                 MayBeDone(call)}};
    case Outcome::Kind::OddOutcome:
        return {"Esito non previsto",
                "esito " + outcome.result,
                {"Il SISS ha risposto con un esito che il servizio non prevede: riferire all'assistenza SISS la "
                 "risposta.",
                 MayBeDone(call)}};
    case Outcome::Kind::NothingCame:
        break;
    }
    return {"Nessuna risposta",
            call.reply ? "il file della risposta è vuoto" : "manca il file della risposta",
            {"Dal client SISS non è arrivato niente, oppure ha dato un errore: il giornale della cartella clinica e "
             "SISS\\Tracce dicono quale. Vellumo la tratta come il codice SEBCONT0001.",
             MayBeDone(call)}};
}

std::string TitleOf(Operation::Kind kind)
{
    switch (kind)
    {
    case Operation::Kind::Identification:
        return "Identificazione di un cittadino";
    case Operation::Kind::Certificate:
        return "Certificato di malattia";
    case Operation::Kind::Contact:
        return "Contatto";
    case Operation::Kind::Prescriptions:
        return "Prescrizioni";
    case Operation::Kind::Other:
        return "Altro servizio";
    case Operation::Kind::NoCalls:
        break;
    }
    return "Nessuna chiamata";
}

std::vector<std::string> ReasonsForNoPrescriptions()
{
    return {"Stanno nella cartella dell'ultima operazione prima di loro, anche di un altro paziente: guardare lì.",
            "Da quando il programma era aperto non c'era ancora stata un'operazione che fa una cartella.",
            "Il medico ha scelto di proseguire senza SISS, o ha annullato la finestra di stampa.",
            "L'utente è personale dello studio: le ricette aspettano il medico e non vanno al SISS.",
            "I farmaci sono di classe C e l'impostazione CCEInviaRicettaFarmaciClasseC è spenta.",
            "Le impostazioni CCEAbilitato e CCEAbilitaLog non erano accese tutte e due.",
            "Il programma si è chiuso mentre aspettava la risposta: guardare SISS\\Tracce."};
}

std::string ReasonForNoCalls()
{
    return "La cartella è vuota: l'operazione è cominciata ma nessuna chiamata è finita. L'utente è personale dello "
           "studio (non si chiama il SISS), manca il modello della richiesta (lo dice il giornale), o il programma si "
           "è chiuso durante la chiamata.";
}

std::string SummaryOf(const ExchangeRecord& record)
{
    const auto count = [](std::size_t number, std::string_view one, std::string_view many)
    { return std::to_string(number) + ' ' + std::string(number == 1 ? one : many); };
    const Tally tally = TallyOf(record);
    return count(record.operations.size(), "operazione", "operazioni") + ", " +
           count(tally.calls, "chiamata", "chiamate") + ", " + std::to_string(tally.bad) + " da guardare";
}

std::string TimeText(host::Date time)
{
    if (time.IsZero())
    {
        return {};
    }
    const auto parts = time.ToCalendar();
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), " %02d:%02d:%02d", parts.hour, parts.minute, parts.second);
    return time.ToDayText() + text.data();
}

} // namespace vellumo::diagnosi
