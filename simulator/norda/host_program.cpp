#include "simulator/norda/host_program.h"

#include "host/fault.h"
#include "host/text.h"

#include <algorithm>
#include <thread>

namespace vellumo::norda
{
namespace
{

bool Contains(const std::string& text, const std::string& part)
{
    return host::WithoutCase(text).find(host::WithoutCase(part)) != std::string::npos;
}

} // namespace

// What the host does meanwhile is no statement of the library's.
class HostProgram::OwnWork
{
public:
    explicit OwnWork(HostProgram& program)
        : m_program(program)
    {
        m_program.m_isOwnWork = true;
    }
    ~OwnWork() { m_program.m_isOwnWork = false; }
    OwnWork(const OwnWork&) = delete;
    OwnWork& operator=(const OwnWork&) = delete;

private:
    HostProgram& m_program;
};

HostProgram::HostProgram(Workstation& workstation, std::shared_ptr<Database> database, host::Bridge& bridge,
                         std::int32_t user)
    : m_workstation(workstation)
    , m_bridge(&bridge)
    , m_database(std::move(database))
    , m_utils(std::make_shared<HostUtils>(m_database))
    , m_lockSrv(std::make_shared<HostLockSrv>(user))
{
    m_database->SetObserver([this](const std::string& sql) { BeforeStatement(sql); });
}

HostProgram::~HostProgram()
{
    static_cast<void>(ReleaseProvider());
    m_database->SetObserver({});
}

void HostProgram::LogOn(std::optional<std::int32_t> user)
{
    m_lockSrv = std::make_shared<HostLockSrv>(user);
    HandOver();
}

void HostProgram::SetStudio(std::int32_t studio)
{
    m_studio = studio;
    HandOver();
}

void HostProgram::Withhold(const std::string& part)
{
    m_withheld.insert(part);
    HandOver();
}

void HostProgram::BecomeStrict()
{
    if (!IsStrict())
    {
        const OwnWork preparing(*this);
        m_database->BecomeStrict();
        m_utils->BecomeStrict();
    }
}

std::size_t HostProgram::SecondConnections() const noexcept
{
    return IsStrict() ? m_database->Strictness()->SecondConnections() : 0;
}

void HostProgram::RollBack()
{
    const OwnWork mending(*this);
    m_database->RollbackTransaction();
}

std::shared_ptr<host::Record> HostProgram::LoadCertificate(std::int32_t id)
{
    const OwnWork reading(*this);
    return m_objects.LoadCertificate(m_database, id);
}

ProviderClient& HostProgram::Provider()
{
    if (!m_provider)
    {
        m_letGo.reset();
        m_provider = m_workstation.CreateProvider({m_bridge, &m_objects, &m_prescriptions, m_renamedIn, IsStrict()});
        HandOver();
    }
    return *m_provider;
}

bool HostProgram::ReleaseProvider()
{
    session.reset(); // it holds objects of the library
    const auto provider = m_provider ? std::move(m_provider) : std::move(m_letGo);
    return !provider || provider->Release();
}

void HostProgram::LetGoOfProvider()
{
    session.reset();
    Provider().LetGo();
    m_letGo = std::move(m_provider);
}

void HostProgram::HandOver()
{
    const auto given = [this](const char* part, const auto& object)
    { return m_withheld.contains(part) ? nullptr : object; };
    if (m_provider)
    {
        m_provider->SetConnection(given("Connection", m_database));
        m_provider->SetLockSrv(given("LockSrv", m_lockSrv));
        m_provider->SetUtils(given("Utils", m_utils));
        m_provider->SetStudio(m_studio);
    }
}

std::size_t HostProgram::CountStatements(const std::string& part) const
{
    return static_cast<std::size_t>(
        std::ranges::count_if(m_statements, [&](const std::string& sql) { return Contains(sql, part); }));
}

void HostProgram::BeforeStatement(const std::string& sql)
{
    if (m_isOwnWork)
    {
        return;
    }
    m_statements.push_back(sql);
    if (m_statementSeen)
    {
        m_statementSeen();
    }
    std::this_thread::sleep_for(m_pace);
    for (const auto& fault : m_faults)
    {
        if (Contains(sql, fault->pattern) && (++fault->met == fault->number || fault->number == 0))
        {
            fault->fired = true;
            m_database->Fail(fault->kind, fault->message);
        }
    }
}

} // namespace vellumo::norda
