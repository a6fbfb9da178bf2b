// What the host itself shows and does.
#include "host/fault.h"
#include "host/host_services.h"
#include "host/text.h"
#include "simulator/norda/ansi_file.h"
#include "simulator/norda/program/command.h"
#include "simulator/norda/program/desk.h"
#include "simulator/norda/program/print_table.h"

#include <algorithm>
#include <ostream>

namespace vellumo::norda
{
namespace
{

std::string NameOf(const std::filesystem::path& path)
{
    const auto name = path.filename().u8string();
    return {name.begin(), name.end()};
}

std::vector<std::filesystem::path> Entries(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> entries;
    if (std::filesystem::exists(folder))
    {
        for (const auto& entry : std::filesystem::directory_iterator(folder))
        {
            entries.push_back(entry.path());
        }
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

void ListUsers(Desk& desk, const Given&)
{
    for (const auto& user : Users(*desk.Host().TheDatabase()))
    {
        desk.Out() << "  " << user.logOn << "  " << user.fullName
                   << (user.isDoctor ? ", medico\n" : ", personale di studio\n");
    }
}

void LogOn(Desk& desk, const Given& given)
{
    const auto user = FindUser(*desk.Host().TheDatabase(), given[0]);
    if (!user)
    {
        throw host::Fault("L'utente \"" + given[0] + "\" non esiste; \"utenti\" li elenca.");
    }
    desk.LogOn(*user);
    desk.Out() << "Utente: " << user->fullName << ".\n";
}

void ListPatients(Desk& desk, const Given& given)
{
    desk.Print("SELECT IDPaziente AS Numero, Cognome, Nome, CodiceFiscale, DataNascita, Revocato FROM Paziente "
               "WHERE Cognome LIKE {0} OR Nome LIKE {0} OR CodiceFiscale LIKE {0} ORDER BY Cognome, Nome",
               {'%' + given[0] + '%'});
}

void ShowPatient(Desk& desk, const Given& given)
{
    const auto id = host::Value(given[0]).ToInteger();
    host::HostServices services;
    services.connection = desk.Host().TheDatabase();
    const auto record = desk.Host().Objects().CreateRecord(host::RecordKind::Patient, services);
    if (!record->Load(id))
    {
        throw host::Fault("Il paziente " + given[0] + " non esiste.");
    }
    const auto rows = desk.Host().Utils().OpenRecordset("SELECT * FROM Paziente WHERE IDPaziente = {0}", {id});
    for (std::size_t i = 0; i < rows->ColumnCount(); ++i)
    {
        desk.Out() << "  " << rows->ColumnName(i) << ": " << ShownText(record->Get(rows->ColumnName(i))) << '\n';
    }
    desk.Print("SELECT IDTipoResidenza AS Tipo, Indirizzo, Residenza.Cap, Comune FROM Residenza "
               "LEFT JOIN Norda..Comune AS C ON C.IDComune = Residenza.IDComune WHERE IDPaziente = {0}",
               {id});
    desk.Print("SELECT CodiceIdentificativoEsenzione AS Codice, Esenzione, DataEsenzione, Scadenza "
               "FROM VwEsenzionePerPaziente WHERE IDPaziente = {0}",
               {id});
}

void ListCertificates(Desk& desk, const Given&)
{
    desk.Print("SELECT IDCertificatoMalattia AS Numero, Cognome, Nome, DataInizio, CertificatoMalattia.DataScadenza, "
               "NumeroProtocollo, DataRicezione FROM CertificatoMalattia "
               "LEFT JOIN Paziente ON Paziente.IDPaziente = CertificatoMalattia.IDPaziente "
               "ORDER BY IDCertificatoMalattia");
}

void ListPrescriptions(Desk& desk, const Given& given)
{
    desk.Print("SELECT IDRicetta AS Ricetta, NumRicetta AS Numero, CodiceIUP, NumeroProtocollo, Annullata "
               "FROM RicettaSSN WHERE {0} = '' OR IDRicetta = {0} ORDER BY IDRicetta, NumRicetta",
               {given[0]});
}

void SetSetting(Desk& desk, const Given& given)
{
    const auto key = desk.Host().Utils().FindKey("ImpostazioneStudio", "IDImpostazioneStudio",
                                                 "IDStudio = {0} AND Nome = {1}", {Practice::studio, given[0]});
    desk.Host().Utils().WriteRow("ImpostazioneStudio", "IDImpostazioneStudio", key,
                                 {{"IDStudio", Practice::studio}, {"Nome", given[0]}, {"Valore", given[1]}});
    desk.Out() << given[0] << " è ora " << given[1] << ".\n";
}

void ListSettings(Desk& desk, const Given&)
{
    desk.Print("SELECT Nome, Valore FROM ImpostazioneStudio WHERE IDStudio = {0} ORDER BY Nome", {Practice::studio});
}

void ListLog(Desk& desk, const Given&)
{
    const auto folders = Entries(desk.ThePractice().LogFolder());
    for (std::size_t i = 0; i < folders.size(); ++i)
    {
        desk.Out() << "  " << i + 1 << "  " << NameOf(folders[i]) << "  (" << Entries(folders[i]).size() << " file)\n";
    }
    desk.Out() << (folders.empty() ? "Il registro è vuoto. \"impostazione CCEAbilitaLog True\" lo abilita.\n" : "");
}

void ShowLog(Desk& desk, const Given& given)
{
    const auto folders = Entries(desk.ThePractice().LogFolder());
    const auto number = host::Value(given[0]).ToInteger();
    if (number < 1 || static_cast<std::size_t>(number) > folders.size())
    {
        throw host::Fault("La cartella " + given[0] + " non esiste.");
    }
    for (const auto& file : Entries(folders[static_cast<std::size_t>(number) - 1]))
    {
        desk.Out() << "--- " << NameOf(file) << '\n' << ReadAnsiFile(file) << '\n';
    }
}

void RunSql(Desk& desk, const Given& given)
{
    auto verb = given[0].substr(0, given[0].find(' '));
    std::transform(verb.begin(), verb.end(), verb.begin(), host::Upper);
    if (verb == "SELECT")
    {
        desk.Print(given[0]);
        return;
    }
    desk.Host().TheDatabase()->Execute(given[0]);
    desk.Out() << "Fatto.\n";
}

} // namespace

const Commands practiceCommands = {
    {"utenti", "", "gli utenti dello studio", ListUsers},
    {"utente", "NOME", "collega un altro utente", LogOn},
    {"pazienti", "[TESTO…]", "i pazienti, o quelli il cui nome o codice contiene TESTO", ListPatients},
    {"scheda", "#PAZIENTE", "la scheda di un paziente con indirizzi ed esenzioni", ShowPatient},
    {"certificati", "", "i certificati di malattia con i loro protocolli INPS", ListCertificates},
    {"ricette", "[#RICETTA]", "le prescrizioni di tutte le ricette, o di una, con i loro codici", ListPrescriptions},
    {"impostazione", "", "le impostazioni dello studio", ListSettings},
    {"impostazione", "NOME VALORE…", "ne cambia una, per esempio CCEAbilitaLog True", SetSetting},
    {"registro", "", "le cartelle del registro degli scambi", ListLog},
    {"registro", "#CARTELLA", "i file di una", ShowLog},
    {"sql", "ISTRUZIONE…", "legge o cambia la base dati", RunSql},
};

} // namespace vellumo::norda
