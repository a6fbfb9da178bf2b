// Installations that are broken on purpose, one at a time: the diagnosis names each, with what to do. What only Windows
// has is in windows_test.cpp.
#include "tests/diagnosi/installation/whole_installation.h"

#include <doctest.h>

#include <filesystem>

using namespace vellumo;
using diagnosi::State;
using tests::Broken;
using tests::WholeInstallation;

namespace
{

constexpr const char* hostPath = "HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Norda.exe\\Path";
constexpr const char* clientPath = "HKCU\\Software\\VB and VBA Program Settings\\Norda\\SISS\\Path";
const std::string templates = "host\\SISS\\Templates\\";
const std::string tables = "client\\SISS\\Prerequisiti\\mysql\\data\\imp_test\\sau\\";

// A file in the place of a folder.
auto FileAt(const std::string& name)
{
    return [name](WholeInstallation& whole) { whole.Write(name, "nessuna cartella"); };
}

auto Without(const std::string& name)
{
    return [name](WholeInstallation& whole) { whole.Remove(name); };
}

auto Changed(const std::string& name, const std::string& from, const std::string& to)
{
    return [=](WholeInstallation& whole) { whole.Replace(name, from, to); };
}

auto Database(const std::string& from, const std::string& to)
{
    return [=](WholeInstallation& whole) { whole.MakeDatabase({{from, to}}); };
}

const std::vector<Broken> folders = {
    {"no App Paths", [](WholeInstallation& whole) { whole.settings.values.erase(hostPath); }, State::Error,
     "Cartella del programma", "App Paths\\Norda.exe", "Installare di nuovo il programma di cartella clinica"},
    {"App Paths of a folder that is gone",
     [](WholeInstallation& whole) { whole.settings.values[hostPath] = whole.Path("altrove"); }, State::Error,
     "Cartella del programma", "altrove, non c'è.", "correggere il valore Path"},
    {"no folder SISS", Without("host\\SISS"), State::Error, "Cartella del programma", "Manca la cartella ",
     "Installare di nuovo Vellumo, indicando la cartella "},
    {"a file in the place of SISS",
     [](WholeInstallation& whole)
     {
         whole.Remove("host\\SISS");
         whole.Write("host\\SISS", "");
     },
     State::Error, "Cartella del programma", "SISS c'è un file.", "Rinominare o spostare il file "},
    {"a file in the place of the log folder", FileAt("host\\SISS\\Log"), State::Error,
     "Scrittura del registro degli scambi", "Log c'è un file.", "Rinominare o spostare il file "},
    {"a file in the place of the folder of traces", FileAt("host\\SISS\\Tracce"), State::Error,
     "Scrittura delle tracce", "Tracce c'è un file.", "Rinominare o spostare il file "},
};

// A file of traces with that line.
auto Traced(const std::string& file, const std::string& line)
{
    return [=](WholeInstallation& whole) { whole.Write("host\\SISS\\Tracce\\" + file, line + "\r\n"); };
}

const std::vector<Broken> traces = {
    {"a code that nobody has stored", Traced("codici 2024-03-04 10.15.00 PC3-1.txt", "*1\tPC3\t1\t10.15\tRicetta\tIUP"),
     State::Attention, "Da controllare", "non ancora salvati: 1, in ", "Aprire il programma di cartella clinica"},
    {"a line that somebody must act on",
     Traced("tracce 2024-03.txt", "2024-03-04 10.15.00 Vellumo 0.9.0.1 DA CONTROLLARE: protocollo 35 non salvato."),
     State::Attention, "Da controllare", "protocollo 35 non salvato.", "se nessuno l'ha già fatto"},
};

const std::vector<Broken> requestTemplates = {
    {"a template is missing", Without(templates + "calcolaIUP.template"), State::Error, "Modelli",
     "Manca il modello calcolaIUP.template", "Installare di nuovo Vellumo"},
    {"no folder of templates", Without("host\\SISS\\Templates"), State::Error, "Modelli",
     "Manca la cartella dei 12 modelli, ", "Installare di nuovo Vellumo"},
    {"a template is broken", Changed(templates + "identificaCittadino.template", "<param/>", "<param>"), State::Error,
     "Modelli", "Il modello identificaCittadino.template non è un documento XML corretto.",
     "Spostare altrove il modello identificaCittadino.template e installare di nuovo Vellumo"},
    {"an element is missing", Changed(templates + "invioCertificatoMalattia.template", "<noteDiagnosi/>", ""),
     State::Error, "Modelli", "Nel modello invioCertificatoMalattia.template manca: noteDiagnosi.",
     "Spostare altrove il modello"},
    {"a part with all its elements is missing",
     Changed(templates + "identificaCittadinoEsteso.template", "profiloCittadino", "profilo"), State::Error, "Modelli",
     "manca: profiloCittadino. ", "Spostare altrove il modello"},
    {"an attribute is missing",
     Changed(templates + "fineFaseprescrittiva.template", "<param dataSetVersion=\"\"/>", "<param/>"), State::Error,
     "Modelli", "Nel modello fineFaseprescrittiva.template manca: @dataSetVersion.", "Spostare altrove il modello"},
    {"a template of the practice's own beside the new one",
     [](WholeInstallation& whole) { whole.Write(templates + "calcolaIUP.template.nuovo", "<a/>"); }, State::Attention,
     "Modelli", "calcolaIUP.template.nuovo", "Confrontare i due file"},
};

const std::vector<Broken> client = {
    {"the client is somewhere else",
     [](WholeInstallation& whole) { whole.settings.values[clientPath] = whole.Path("AppSISS"); }, State::Error,
     "Cartelle del client SISS", "AppSISS del client SISS.", "indicarla nelle impostazioni"},
    {"the client without its tables", Without("client\\SISS\\Prerequisiti"), State::Error, "Cartelle del client SISS",
     "sau del client SISS.", "Installare di nuovo il client SISS"},
    {"the client without a configuration", Without("client\\SISS\\Conf\\WINBRIDGE4SEBACTIVEX.conf"), State::Attention,
     "Configurazione del client SISS", "Manca il file ", "Installare di nuovo il client SISS"},
    {"no index", Without(tables + "master.txt"), State::Error, "Tabelle regionali", "master.txt, manca",
     "Avviare il client SISS"},
    {"an index of last year",
     [](WholeInstallation& whole) { whole.clock.now = host::Date::FromCalendar(2025, 2, 4).value(); }, State::Attention,
     "Tabelle regionali", "è vecchio: la data più recente è 03/02/2024.", "Avviare il client SISS"},
    {"an index that lacks a table", Changed(tables + "master.txt", "MAPPING_REGIONALE|mapping|2024-02-03\r\n", ""),
     State::Error, "Tabelle regionali", "non nomina la tabella MAPPING_REGIONALE.", "Avviare il client SISS"},
    {"an index without a date", Changed(tables + "master.txt", "2023-11-04", "ieri"), State::Attention,
     "Tabelle regionali", "BRANCHE_SPECIALISTICHE (branche.txt) non ha nell'indice una data", "Avviare il client SISS"},
    {"a table is missing", Without(tables + "esenzioni.txt"), State::Error, "Tabelle regionali",
     "ESENZIONI (esenzioni.txt) non può essere letta", "Avviare il client SISS"},
    {"a table without a column", Changed(tables + "esenzioni.txt", "DT_FINE_VALIDITA", "DT_FINE"), State::Error,
     "Tabelle regionali", "non ha la colonna DT_FINE_VALIDITA.", "Avviare il client SISS"},
    {"a table without rows", Changed(tables + "branche.txt", "01|Cardiologia\r\n", ""), State::Attention,
     "Tabelle regionali", "branche.txt) non ha righe.", "Avviare il client SISS"},
};

const std::vector<Broken> databases = {
    {"no such server",
     [](WholeInstallation& whole) { whole.databases.practice = "Driver=Nessuno;Server=altrove;Pwd=segreto"; },
     State::Error, "Database", "Il database non risponde: ", "Controllare la stringa di connessione"},
    {"another database",
     [](WholeInstallation& whole)
     {
         whole.MakeDatabase();
         const auto at = whole.databases.practice.find("studio.db");
         whole.databases.practice.replace(at, 9, "altro.db");
         whole.databases.shared = whole.databases.practice;
     },
     State::Error, "Database", "non c'è nessuna delle tabelle del programma.",
     "deve nominare il database dello studio"},
    {"a view is missing", Database("CREATE VIEW VwEsenzionePerPaziente", "CREATE VIEW Altra"), State::Error, "Database",
     "La tabella o vista VwEsenzionePerPaziente non c'è.", "chi fornisce il programma"},
    {"a shared table is missing", Database("CREATE TABLE Norda..SISS_Esenzione", "CREATE TABLE Norda..Altra"),
     State::Error, "Database", "La tabella o vista Norda..SISS_Esenzione non c'è.", "chi fornisce il programma"},
    {"a view without a column", Database("R.TipoRaggruppamento AS TR_TipoRaggruppamento, ", ""), State::Error,
     "Database", "La colonna VwRicettaFarmaciSSN2009.TR_TipoRaggruppamento non c'è.", "chi fornisce il programma"},
    {"a column of a record is missing", Database("  NumeroProtocolloAnnullamento NVARCHAR(30) NULL,\n", ""),
     State::Attention, "Database", "CertificatoMalattia.NumeroProtocolloAnnullamento non c'è; la legge l'oggetto",
     "chi fornisce il programma"},
    {"a text is a number", Database("CodiceISTAT NVARCHAR(6)", "CodiceISTAT INT"), State::Error, "Database",
     "La colonna Norda..Comune.CodiceISTAT è di tipo INT; dovrebbe essere un testo.", "chi fornisce il programma"},
    {"a date is a number", Database("DataNascita DATETIME", "DataNascita INT"), State::Error, "Database",
     "La colonna Paziente.DataNascita è di tipo INT; dovrebbe essere una data.", "chi fornisce il programma"},
    {"a date is a text", Database("DataEsenzione DATETIME", "DataEsenzione NVARCHAR(10)"), State::Attention, "Database",
     "La colonna EsenzionePerPaziente.DataEsenzione è di tipo NVARCHAR(10); dovrebbe essere una data.",
     "chi fornisce il programma"},
    {"a number of a protocol is filled up with blanks",
     Database("  NumeroProtocollo NVARCHAR(30)", "  NumeroProtocollo CHAR(30)"), State::Error, "Database",
     "CertificatoMalattia.NumeroProtocollo è di tipo CHAR(30); dovrebbe essere un testo di lunghezza variabile.",
     "chi fornisce il programma"},
};

void VerifyAll(const std::vector<Broken>& rows)
{
    for (const auto& row : rows)
    {
        WholeInstallation installation;
        tests::Verify(row, installation);
    }
}

} // namespace

TEST_CASE("broken folders are named")
{
    VerifyAll(folders);
}

TEST_CASE("what is left in the traces is named, what is old is not")
{
    VerifyAll(traces);
    WholeInstallation whole;
    Traced("tracce 2023-01.txt", "2023-01-02 10.15.00 Vellumo 0.9.0.1 DA CONTROLLARE: altro.")(whole);
    Traced("codici 2023-01-02 10.15.00 PC3-1.txt", "-1\tPC3\t1\t10.15\tRicetta\tIUP")(whole);
    CHECK(tests::Complaints(whole.Diagnose()).find(traces.front().check) == std::string::npos);
}

TEST_CASE("broken templates are named")
{
    VerifyAll(requestTemplates);
}

TEST_CASE("what is wrong with the SISS client is named")
{
    VerifyAll(client);
}

TEST_CASE("what the database lacks is named")
{
    VerifyAll(databases);
}

TEST_CASE("a connection string stands in no report")
{
    WholeInstallation installation;
    databases.front().breakIt(installation);
    CHECK(diagnosi::ReportOf(installation.Diagnose()).find("segreto") == std::string::npos);
}

TEST_CASE("what is tried is taken away again")
{
    WholeInstallation installation;
    static_cast<void>(installation.Diagnose());
    CHECK_FALSE(std::filesystem::exists(installation.Path("host\\SISS\\Log")));
}
