#include "package/acceptance/claims.h"

#include <array>

namespace vellumo::acceptance
{

std::span<const Claim> Claims()
{
    static const std::vector<Claim> claims = {
        {"La libreria installata si crea, risponde e si lascia scaricare dalla memoria.", {"fornitore"}},
        {"MSXML di Windows legge le risposte del SISS come il parser con cui sono state provate: "
         "accetta quelle corrette, rifiuta quelle malformate o ostili.",
         {"risposte-ostili", "identificazione-esiti"}},
        {"Le lettere di tutte le lingue passano intere fra SISS, programma e database.", {"lettere"}},
        {"Le finestre di Windows mostrano testi, pulsanti e tasti previsti e si usano da tastiera.",
         {"finestre", "identificazione-confronto", "identificazione-esenzioni"}},
        {"La finestra di Windows per la scelta di un file viene aperta, usata e annullata.", {"elenco-pazienti"}},
        {"Un timer del programma può chiamare la libreria mentre una sua finestra è aperta.", {"chiamate-sovrapposte"}},
        {"Cartelle e Registro di sistema sono letti e scritti dove li mettono Windows e il client SISS.",
         {"installazione", "tabelle", "registro-scambi"}},
        {"Un codice del SISS non va perso, nemmeno se il programma termina a metà.", {"prescrizioni-codici", "tracce"}},
        {"Su SQL Server un paziente è salvato per intero o per niente.",
         {"errori-database", "programma-severo", "identificazione-cittadini"},
         true},
        {"Le istruzioni della libreria sono accettate da SQL Server e vi significano lo stesso.",
         {"identificazione-cittadini", "prescrizioni-chiusura", "prescrizioni-verifica", "certificati", "contatti",
          "elenco-pazienti", "tabelle", "ricerche-senza-riga"},
         true},
        {"Su SQL Server date e lettere oltre Latin-1 tornano come sono state scritte.",
         {"lettere", "elenco-pazienti"},
         true},
    };
    return claims;
}

std::span<const char* const> NotShown()
{
    static constexpr std::array<const char*, 5> notShown = {
        "Gli oggetti ADO di Windows: il programma simulato offre oggetti propri con gli stessi membri, sopra ODBC.",
        "Il programma vero e i suoi oggetti: i nomi e i modi dei suoi membri sono quelli del contratto.",
        "Il client SISS e la rete: le risposte sono simulate.",
        "I lettori di schermo, la carta operatore, la stampa.",
        "Il blocco fra più postazioni che lavorano insieme sullo stesso database.",
    };
    return notShown;
}

} // namespace vellumo::acceptance
