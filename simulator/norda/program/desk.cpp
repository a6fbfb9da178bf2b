#include "simulator/norda/program/desk.h"

#include "host/text.h"
#include "simulator/norda/program/print_table.h"

#include <istream>
#include <ostream>

namespace vellumo::norda
{

Desk::Desk(const Practice& practice, Workstation& workstation, std::istream& in, std::ostream& out)
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

Desk::~Desk()
{
    session.reset(); // it holds objects of the library
    if (m_provider)
    {
        static_cast<void>(m_provider->Release());
    }
}

std::string Desk::ReadLine(const std::string& prompt)
{
    m_out << prompt << std::flush;
    std::string line;
    std::getline(m_in, line);
    return std::string(host::Trimmed(line));
}

bool Desk::IsAtEnd() const
{
    return !m_in;
}

void Desk::Print(const std::string& sql, const host::Parameters& parameters)
{
    PrintTable(m_out, *m_utils->OpenRecordset(sql, parameters));
}

void Desk::LogOn(const User& user)
{
    m_user = user;
    if (m_provider)
    {
        m_provider->SetLockSrv(std::make_shared<HostLockSrv>(m_user.id));
    }
}

ProviderClient& Desk::Provider()
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

void Desk::Answer(std::size_t call, const siss::Behaviour& reply)
{
    m_call = call;
    m_reply = reply;
    m_network.Behave(m_call, m_reply);
}

// The entries of a negative outcome do not stand where those of a proper reply do.
void Desk::AddToAnswer(bool isWarning, const siss::Detail& entry)
{
    auto* const refusal = std::get_if<siss::Refusal>(&m_reply.reply);
    auto& warnings = refusal != nullptr ? refusal->warnings : m_reply.warnings;
    auto& exceptions = refusal != nullptr ? refusal->exceptions : m_reply.exceptions;
    (isWarning ? warnings : exceptions).push_back(entry);
    m_network.Behave(m_call, m_reply);
}

} // namespace vellumo::norda
