// norda at the console: a small clinical record program, one command a line.
#pragma once

#include "simulator/norda/host_records.h"
#include "simulator/norda/host_utils.h"
#include "simulator/norda/practice.h"
#include "simulator/norda/program/workstation.h"
#include "simulator/siss/network.h"

#include <iosfwd>
#include <map>
#include <memory>
#include <string>

namespace vellumo::norda
{

class Console
{
public:
    // The streams and the workstation outlive it. Faults when the database cannot be opened.
    Console(const Practice& practice, Workstation& workstation, std::istream& in, std::ostream& out);
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    // Reads commands until "esci" or the end of the input.
    void Run();

private:
    struct Command
    {
        void (Console::*run)(const std::string& argument);
        const char* usage;
        const char* help;
    };
    static const std::map<std::string, Command>& Commands();

    [[nodiscard]] std::string ReadLine(const std::string& prompt);
    void Obey(const std::string& line);
    void Welcome();

    void Help(const std::string& argument);
    void Quit(const std::string& argument);
    void LogOn(const std::string& argument);
    void ListUsers(const std::string& argument);
    void ListPatients(const std::string& argument);
    void ShowPatient(const std::string& argument);
    void Identify(const std::string& argument);
    void ListCertificates(const std::string& argument);
    void SendCertificate(const std::string& argument);
    void CancelCertificate(const std::string& argument);
    void InsertContact(const std::string& argument);
    void IsActive(const std::string& argument);
    void ListCitizens(const std::string& argument);
    void SetSession(const std::string& argument);
    void SetCard(const std::string& argument);
    void SetReply(const std::string& argument);
    void SetSetting(const std::string& argument);
    void ShowLog(const std::string& argument);

    // Rows of a query in columns.
    void Print(const std::string& sql, const host::Parameters& parameters = {});
    [[nodiscard]] ProviderClient& Provider();

    Practice m_practice;
    Workstation& m_workstation;
    std::istream& m_in;
    std::ostream& m_out;
    siss::Network m_network;
    HostObjects m_objects;
    PrescriptionObjects m_prescriptions;
    std::shared_ptr<Database> m_database;
    std::shared_ptr<HostUtils> m_utils;
    User m_user;
    std::unique_ptr<ProviderClient> m_provider;
    bool m_over = false;
};

} // namespace vellumo::norda
