#include "simulator/norda/program/console.h"

#include "host/fault.h"
#include "host/host_services.h"
#include "host/text.h"
#include "simulator/norda/ansi_file.h"
#include "simulator/norda/program/print_table.h"

#include <algorithm>
#include <istream>
#include <ostream>
#include <sstream>

namespace vellumo::norda
{
namespace
{

// "a  b c" -> "a", "b c"
std::pair<std::string, std::string> FirstWord(const std::string& line)
{
    const auto end = std::min(line.find(' '), line.size());
    return {line.substr(0, end), std::string(host::Trimmed(std::string_view(line).substr(end)))};
}

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

} // namespace

const std::map<std::string, Console::Command>& Console::Commands()
{
    static const std::map<std::string, Command> commands = {
        {"aiuto", {&Console::Help, "", "questo elenco"}},
        {"esci", {&Console::Quit, "", "chiude il programma"}},
        {"utenti", {&Console::ListUsers, "", "gli utenti dello studio"}},
        {"utente", {&Console::LogOn, "NOME", "collega un altro utente"}},
        {"pazienti", {&Console::ListPatients, "[TESTO]", "i pazienti, o quelli il cui nome o codice contiene TESTO"}},
        {"scheda", {&Console::ShowPatient, "NUMERO", "la scheda di un paziente con indirizzi ed esenzioni"}},
        {"identifica", {&Console::Identify, "[NUMERO]", "identifica sul SISS un cittadino, o il paziente NUMERO"}},
        {"certificati", {&Console::ListCertificates, "", "i certificati di malattia con i loro protocolli INPS"}},
        {"invia", {&Console::SendCertificate, "NUMERO", "invia un certificato all'INPS, o lo rettifica"}},
        {"annulla", {&Console::CancelCertificate, "NUMERO", "annulla un certificato inviato"}},
        {"contatto", {&Console::InsertContact, "NUMERO", "registra sul SISS i dati di contatto di un paziente"}},
        {"attivo", {&Console::IsActive, "", "se il collegamento al SISS è attivo"}},
        {"cittadini", {&Console::ListCitizens, "[TESTO]", "SISS: i cittadini che la rete conosce"}},
        {"sessione", {&Console::SetSession, "attiva|inattiva", "SISS: la sessione di questa postazione"}},
        {"carta", {&Console::SetCard, "inserita|assente", "SISS: la carta dell'operatore"}},
        {"risposta",
         {&Console::SetReply, "normale|vuota|persa|errore CODICE TESTO|testo TESTO",
          "SISS: come risponde da ora a ogni richiesta"}},
        {"impostazione",
         {&Console::SetSetting, "[NOME VALORE]", "le impostazioni dello studio, per esempio CCEAbilitaLog True"}},
        {"registro", {&Console::ShowLog, "[NUMERO]", "le cartelle del registro degli scambi, o i file di una"}},
    };
    return commands;
}

Console::Console(const Practice& practice, Workstation& workstation, std::istream& in, std::ostream& out)
    : m_practice(practice)
    , m_workstation(workstation)
    , m_in(in)
    , m_out(out)
    , m_database(practice.Open())
    , m_utils(std::make_shared<HostUtils>(m_database))
    , m_user(FindUser(*m_database, "bianchi").value_or(User()))
{
    m_network.People().LoadSeed();
    m_practice.Register(m_workstation.Machine());
}

Console::~Console()
{
    if (m_provider)
    {
        static_cast<void>(m_provider->Release());
    }
}

void Console::Run()
{
    Welcome();
    while (!m_over)
    {
        Obey(ReadLine(m_user.logOn + "> "));
    }
}

void Console::Welcome()
{
    m_out << "Norda, cartella clinica simulata. Studio in " << m_practice.Folder().string()
          << "\nUtente: " << m_user.fullName << ". \"aiuto\" elenca i comandi.\n";
}

std::string Console::ReadLine(const std::string& prompt)
{
    m_out << prompt << std::flush;
    std::string line;
    if (!std::getline(m_in, line))
    {
        m_over = true;
    }
    return std::string(host::Trimmed(line));
}

void Console::Obey(const std::string& line)
{
    if (line.empty())
    {
        return;
    }
    const auto [word, argument] = FirstWord(line);
    const auto found = Commands().find(word);
    if (found == Commands().end())
    {
        m_out << "Comando sconosciuto: " << word << ". \"aiuto\" elenca i comandi.\n";
        return;
    }
    try
    {
        (this->*found->second.run)(argument);
    }
    catch (const host::Fault& fault)
    {
        m_out << "Errore: " << fault.Description() << '\n';
    }
}

void Console::Help(const std::string&)
{
    for (const auto& [word, command] : Commands())
    {
        m_out << "  " << word << ' ' << command.usage << "\n      " << command.help << '\n';
    }
}

void Console::Quit(const std::string&)
{
    m_over = true;
}

void Console::ListUsers(const std::string&)
{
    for (const auto& user : Users(*m_database))
    {
        m_out << "  " << user.logOn << "  " << user.fullName
              << (user.isDoctor ? ", medico\n" : ", personale di studio\n");
    }
}

void Console::LogOn(const std::string& argument)
{
    const auto user = FindUser(*m_database, argument);
    if (!user)
    {
        throw host::Fault("L'utente \"" + argument + "\" non esiste; \"utenti\" li elenca.");
    }
    m_user = *user;
    if (m_provider)
    {
        m_provider->SetLockSrv(std::make_shared<HostLockSrv>(m_user.id));
    }
}

void Console::ListPatients(const std::string& argument)
{
    const auto pattern = '%' + argument + '%';
    Print("SELECT IDPaziente AS Numero, Cognome, Nome, CodiceFiscale, DataNascita, Revocato FROM Paziente "
          "WHERE Cognome LIKE {0} OR Nome LIKE {0} OR CodiceFiscale LIKE {0} ORDER BY Cognome, Nome",
          {pattern});
}

void Console::ShowPatient(const std::string& argument)
{
    const auto id = host::Value(argument).ToInteger();
    host::HostServices services;
    services.connection = m_database;
    const auto record = m_objects.CreateRecord(host::RecordKind::Patient, services);
    if (!record->Load(id))
    {
        throw host::Fault("Il paziente " + argument + " non esiste.");
    }
    const auto rows = m_utils->OpenRecordset("SELECT * FROM Paziente WHERE IDPaziente = {0}", {id});
    for (std::size_t i = 0; i < rows->ColumnCount(); ++i)
    {
        m_out << "  " << rows->ColumnName(i) << ": " << ShownText(record->Get(rows->ColumnName(i))) << '\n';
    }
    Print("SELECT IDTipoResidenza AS Tipo, Indirizzo, Residenza.Cap, Comune FROM Residenza "
          "LEFT JOIN Norda..Comune AS C ON C.IDComune = Residenza.IDComune WHERE IDPaziente = {0}",
          {id});
    Print("SELECT CodiceIdentificativoEsenzione AS Codice, Esenzione, DataEsenzione, Scadenza "
          "FROM VwEsenzionePerPaziente WHERE IDPaziente = {0}",
          {id});
}

ProviderClient& Console::Provider()
{
    if (!m_provider)
    {
        m_provider = m_workstation.CreateProvider({&m_network, &m_objects, &m_prescriptions});
        m_provider->SetConnection(m_database);
        m_provider->SetUtils(m_utils);
        m_provider->SetStudio(Practice::studio);
        m_provider->SetLockSrv(std::make_shared<HostLockSrv>(m_user.id));
    }
    return *m_provider;
}

// A fresh search opens SISS's own window; here its operator names the citizen.
void Console::Identify(const std::string& argument)
{
    Argument patient;
    if (argument.empty())
    {
        m_network.SetChosenCitizen(
            ReadLine("Finestra di ricerca del SISS - codice fiscale del cittadino (vuoto: nessuno): "));
    }
    else
    {
        patient = {Passing::ByValue, host::Value(argument).ToInteger()};
    }
    bool gestito = false;
    const auto id = Provider().IdentificaPaziente(patient, gestito);
    m_out << "Risposta: paziente " << id << ", Gestito " << (gestito ? "True" : "False") << '\n';
}

void Console::ListCertificates(const std::string&)
{
    Print("SELECT IDCertificatoMalattia AS Numero, Cognome, Nome, DataInizio, CertificatoMalattia.DataScadenza, "
          "NumeroProtocollo, DataRicezione FROM CertificatoMalattia "
          "LEFT JOIN Paziente ON Paziente.IDPaziente = CertificatoMalattia.IDPaziente "
          "ORDER BY IDCertificatoMalattia");
}

// The outcome is in the windows; the answers say nothing about it.
void Console::SendCertificate(const std::string& argument)
{
    const auto record = m_objects.LoadCertificate(m_database, host::Value(argument).ToInteger());
    static_cast<void>(Provider().InviaCertificato({Passing::ByValue, {}, record}));
}

void Console::CancelCertificate(const std::string& argument)
{
    const auto record = m_objects.LoadCertificate(m_database, host::Value(argument).ToInteger());
    static_cast<void>(Provider().AnnullaCertificato({Passing::ByValue, {}, record}));
}

void Console::InsertContact(const std::string& argument)
{
    static_cast<void>(Provider().InserisciContatto({Passing::ByValue, host::Value(argument).ToInteger()}));
}

void Console::IsActive(const std::string&)
{
    m_out << (Provider().IsActive() ? "Il collegamento al SISS è attivo.\n"
                                    : "Il collegamento al SISS non è attivo.\n");
}

void Console::ListCitizens(const std::string& argument)
{
    for (const auto& [code, citizen] : m_network.People().All())
    {
        const auto line = code + "  " + citizen.Get("cognomeCittadino") + ' ' + citizen.Get("nomeCittadino") + ", " +
                          citizen.Get("comuneResidenzaCittadino");
        if (line.find(argument) != std::string::npos)
        {
            m_out << "  " << line << '\n';
        }
    }
}

void Console::SetSession(const std::string& argument)
{
    m_network.SetSessionActive(argument != "inattiva");
    m_out << "Sessione SISS " << (argument == "inattiva" ? "inattiva.\n" : "attiva.\n");
}

void Console::SetCard(const std::string& argument)
{
    m_network.SetOperatorCard(argument != "assente");
    m_out << "Carta dell'operatore " << (argument == "assente" ? "assente.\n" : "inserita.\n");
}

void Console::SetReply(const std::string& argument)
{
    const auto [kind, rest] = FirstWord(argument);
    siss::Behaviour behaviour;
    if (kind == "errore")
    {
        const auto [code, message] = FirstWord(rest);
        behaviour.reply = siss::Refusal{code, message, {}, {}};
    }
    else if (kind == "testo" || kind == "vuota")
    {
        behaviour.reply = siss::Verbatim{rest};
    }
    else if (kind == "persa")
    {
        behaviour.reply = siss::LostReply{};
    }
    else if (kind != "normale")
    {
        throw host::Fault(std::string("Uso: risposta ") + Commands().at("risposta").usage);
    }
    m_network.Behave(0, behaviour);
    m_out << "Da ora il SISS risponde così: " << argument << '\n';
}

void Console::SetSetting(const std::string& argument)
{
    if (!argument.empty())
    {
        const auto [name, value] = FirstWord(argument);
        const auto key = m_utils->FindKey("ImpostazioneStudio", "IDImpostazioneStudio", "IDStudio = {0} AND Nome = {1}",
                                          {Practice::studio, name});
        m_utils->WriteRow("ImpostazioneStudio", "IDImpostazioneStudio", key,
                          {{"IDStudio", Practice::studio}, {"Nome", name}, {"Valore", value}});
    }
    Print("SELECT Nome, Valore FROM ImpostazioneStudio WHERE IDStudio = {0} ORDER BY Nome", {Practice::studio});
}

void Console::ShowLog(const std::string& argument)
{
    const auto folders = Entries(m_practice.LogFolder());
    if (folders.empty())
    {
        m_out << "Il registro è vuoto. \"impostazione CCEAbilitaLog True\" lo abilita.\n";
    }
    if (argument.empty())
    {
        for (std::size_t i = 0; i < folders.size(); ++i)
        {
            m_out << "  " << i + 1 << "  " << NameOf(folders[i]) << "  (" << Entries(folders[i]).size() << " file)\n";
        }
        return;
    }
    const auto number = host::Value(argument).ToInteger();
    if (number < 1 || static_cast<std::size_t>(number) > folders.size())
    {
        throw host::Fault("La cartella " + argument + " non esiste.");
    }
    for (const auto& file : Entries(folders[static_cast<std::size_t>(number) - 1]))
    {
        m_out << "--- " << NameOf(file) << '\n' << ReadAnsiFile(file) << '\n';
    }
}

void Console::Print(const std::string& sql, const host::Parameters& parameters)
{
    PrintTable(m_out, *m_utils->OpenRecordset(sql, parameters));
}

} // namespace vellumo::norda
