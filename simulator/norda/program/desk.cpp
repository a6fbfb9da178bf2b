#include "simulator/norda/program/desk.h"

#include "host/text.h"
#include "simulator/norda/program/print_table.h"

#include <istream>
#include <ostream>

namespace vellumo::norda
{

Desk::Desk(const Practice& practice, Workstation& workstation, std::istream& in, std::ostream& out)
    : m_practice(practice)
    , m_in(in)
    , m_out(out)
    , m_host(workstation, practice.Open(), m_network, 0)
{
    if (const auto user = FindUser(*m_host.TheDatabase(), "bianchi"))
    {
        LogOn(*user);
    }
    m_network.People().LoadSeed();
    m_practice.Register(workstation.Machine());
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
    PrintTable(m_out, *m_host.Utils().OpenRecordset(sql, parameters));
}

void Desk::LogOn(const User& user)
{
    m_user = user;
    m_host.LogOn(user.id);
}

void Desk::Answer(std::size_t call, const siss::Behaviour& reply)
{
    m_call = call;
    m_reply = reply;
    m_network.Behave(m_call, m_reply);
}

void Desk::AddToAnswer(bool isWarning, const siss::Detail& entry)
{
    m_reply.Add(isWarning, entry);
    m_network.Behave(m_call, m_reply);
}

} // namespace vellumo::norda
